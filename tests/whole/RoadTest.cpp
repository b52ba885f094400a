#include "tests/support/Paper.h"
#include "tests/whole/SaleDesk.h"

#include <QDate>
#include <QProcess>

namespace {

QString today()
{
    return QDate::currentDate().toString(Qt::ISODate);
}

} // namespace

TEST(Walk, LeavesItsSaleInItsDatabase)
{
    QTemporaryDir folder;
    QProcess desk;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "HOME"})
        environment.insert(QString::fromLatin1(name), folder.filePath("home"));
    desk.setProcessEnvironment(environment);
    desk.start(QCoreApplication::applicationDirPath() + QStringLiteral("/desk"),
               {QStringLiteral("--walk"), folder.filePath("out")});
    ASSERT_TRUE(desk.waitForFinished(120'000));
    ASSERT_EQ(desk.exitStatus(), QProcess::NormalExit);
    ASSERT_EQ(desk.exitCode(), 0) << desk.readAllStandardError().toStdString();

    QProcess shell; // the database's own command-line tool
    shell.start(
        QStringLiteral("sqlite3"),
        {folder.filePath("out/walk.db"),
         QStringLiteral(
             "SELECT OrdM_TaxTotal, OrdM_TaxFreeTotal, OrdM_HalinTotal, OrdM_Total, OrdM_Misugum FROM tPSOrderMaster "
             "WHERE OrdM_Date = '%1';SELECT PM_Name, OrdD_UnitPrice, OrdD_HalinUnit, OrdD_Count FROM tPSOrderDetail "
             "JOIN tPSProductMaster USING (PM_PK) JOIN tPSOrderMaster USING (OrdM_PK) WHERE OrdM_Date = '%1' ORDER BY "
             "OrdD_PK;SELECT tpstrans_Operator, tpstrans_Money, tpstrans_Method FROM tPSTransaction WHERE "
             "tpstrans_Date "
             "= '%1' ORDER BY tpstrans_PK")
             .arg(today())});
    ASSERT_TRUE(shell.waitForFinished());
    EXPECT_EQ(QString::fromUtf8(shell.readAllStandardOutput()).toStdString(), "0|76000|500|76000|0\n"
                                                                              "아카시아 벌꿀 1kg|38000|0|2\n"
                                                                              "프로바이오틱스 30포|36000|500|1\n"
                                                                              "프로바이오틱스 30포|35500|0|-1\n"
                                                                              "2|1000|\n"
                                                                              "3|20000|00\n"
                                                                              "3|50000|01\n"
                                                                              "3|40500|10\n"
                                                                              "4|35500|\n");
    QProcess check;
    check.start(QCoreApplication::applicationDirPath() + QStringLiteral("/desk"),
                {QStringLiteral("--check"), QStringLiteral("--database"),
                 QStringLiteral("sqlite:") + folder.filePath("out/walk.db")});
    ASSERT_TRUE(check.waitForFinished());
    EXPECT_EQ(check.exitCode(), 0) << check.readAllStandardOutput().toStdString();
    // What was paid stands on paper.
    const Paper receipt(folder.filePath("out/receipt.pdf"));
    EXPECT_EQ(receipt.word("111,500").page, 0);
    const Paper roll(folder.filePath("out/roll.pdf"));
    EXPECT_TRUE(roll.has("111,500"));
    EXPECT_TRUE(roll.has("20,000"));
    EXPECT_TRUE(Paper(folder.filePath("out/period.pdf")).has("111,500"));
    // The shop set up from nothing: what was bought, less what was sold; its receipt under its own name.
    shell.start(QStringLiteral("sqlite3"),
                {folder.filePath("out/new-shop.db"),
                 QStringLiteral("SELECT CM_Name FROM tPSCompanyMaster;SELECT PM_Name, IN_Count, IN_Total FROM "
                                "tPSIncoming JOIN tPSProductMaster USING (PM_PK);SELECT PM_PK, OrdD_UnitPrice, "
                                "OrdD_Count FROM tPSOrderDetail;SELECT OrdM_Total, OrdM_Misugum FROM "
                                "tPSOrderMaster;SELECT tpstrans_Operator, tpstrans_Money FROM tPSTransaction")});
    ASSERT_TRUE(shell.waitForFinished());
    EXPECT_EQ(QString::fromUtf8(shell.readAllStandardOutput()).toStdString(), "가온약초\n"
                                                                              "감초생강차|30.0|230000\n"
                                                                              "1|12000|3\n"
                                                                              "36000|0\n"
                                                                              "3|36000\n");
    EXPECT_TRUE(Paper(folder.filePath("out/first-roll.pdf")).has("001감초생강차"));
    EXPECT_GE(QDir(folder.filePath("out")).entryList({QStringLiteral("*.png")}).size(), 10);
}
