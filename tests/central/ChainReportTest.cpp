#include "components/VantoChain/ChainReport.h"
#include "components/VantoPayPeriod/PayPeriodReport.h"
#include "components/VantoSalesPeriod/SalesPeriodReport.h"
#include "components/VantoStock/StockReport.h"
#include "components/frame/Reading.h"
#include "desk/chain/ChainReport.h"
#include "desk/sample/Clinic.h"
#include "desk/window/DeskWindow.h"
#include "platform/automation/Automation.h"
#include "tests/support/Refusal.h"
#include "tests/support/SilentServer.h"
#include "tests/support/TestDatabase.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

#include <gmock/gmock.h>

using namespace statistics;

namespace {

const Period month{QDate(2026, 6, 1), QDate(2026, 6, 30)};

Sheet sheetOf(Report &report, const ado::ConnectionPtr &connection, int view = 0)
{
    Reading(connection, report.figuresOf(view, month), month).readAll();
    return report.sheet(view);
}

/// A head office that sees a clinic called 본점.
class SeenChain : public testing::Test
{
protected:
    SeenChain()
        : clinic_(ado::Engine::PostgreSQL, false)
        , office_(ado::Engine::PostgreSQL)
    {
        sample::fill(*clinic_.connection(), sample::Size::Small);
        for (const char *statement : {"DROP ROLE IF EXISTS head_desk", "CREATE ROLE head_desk LOGIN"})
            office_.run(QLatin1String(statement));
        runScript();
        add("본점", socketFolder(), 5432);
    }
    ~SeenChain() override
    {
        desk_.reset();
        office_.run("DROP OWNED BY head_desk");
    }

    void runScript()
    {
        ASSERT_EQ(QProcess::execute(QStringLiteral("psql"),
                                    {"-q", "-v", "desk=head_desk", "-f", SCRIPTS "head-office.sql", office_.address()}),
                  0);
    }
    QString socketFolder() const { return clinic_.address().section(QStringLiteral("host="), 1); }
    void add(const char *name, const QString &host, int port, const char *schema = "public")
    {
        office_.run(QStringLiteral("SELECT chain.add_clinic('%1', '%2', %3, '%4', 'clinic', NULL, 'prefer', '%5')")
                        .arg(QString::fromUtf8(name), host)
                        .arg(port)
                        .arg(clinic_.serverDatabase(), QLatin1String(schema)));
    }
    /// The head office's desk, which may ask for figures and look at nothing else.
    const ado::ConnectionPtr &desk()
    {
        if (!desk_)
            desk_ = ado::Connection::open(
                QString(office_.address()).replace(QStringLiteral("clinic@"), QStringLiteral("head_desk@")));
        return desk_;
    }
    Sheet seen(int view = 0)
    {
        ChainReport report;
        return sheetOf(report, desk(), view);
    }

    TestDatabase clinic_, office_;
    ado::ConnectionPtr desk_;
};

std::vector<std::string> texts(const Row &row)
{
    std::vector<std::string> cells;
    for (const Cell &cell : row)
        cells.push_back(plainText(cell).toStdString());
    return cells;
}

} // namespace

TEST_F(SeenChain, HasTheFiguresOfTheClinicsOwnReports)
{
    SalesPeriodReport sales;
    PayPeriodReport pay;
    StockReport stock;
    const Row sold = sheetOf(sales, clinic_.connection()).totals;
    const Row paid = sheetOf(pay, clinic_.connection()).totals;
    const Sheet shelf = sheetOf(stock, clinic_.connection(), 1);
    const auto both = [&](std::size_t one, std::size_t other) {
        return Cell(Sum::of(paid[one]) + Sum::of(paid[other]));
    };
    const QString owed = clinic_.value(
        "SELECT SUM(OrdM_Misugum) FROM tPSOrderMaster WHERE OrdM_Date BETWEEN '2026-06-01' AND '2026-06-30'");
    // Behind the first column: orders, sold, discount, returns, returned, net; cash to bank, late cash to bank, ...
    const Row expected{QStringLiteral("본점"),
                       sold[1],
                       sold[2],
                       sold[3],
                       sold[5],
                       sold[6],
                       both(1, 4),
                       both(2, 5),
                       both(3, 6),
                       paid[8],
                       paid[9],
                       paid[10],
                       paid[11],
                       owed,
                       QString()};
    const Sheet chained = seen();
    Figure lastDay{ChainReport().lastDayStatement()}; // what its window begins with
    lastDay.take = [](const Record &row) { EXPECT_EQ(row.date(0), month.last); };
    Reading(desk(), {lastDay}, month).readAll();
    ASSERT_EQ(chained.rows.size(), 1);
    EXPECT_EQ(texts(chained.rows[0]), texts(expected));
    EXPECT_NE(plainText(sold[6]), QStringLiteral("0"));
    const Sheet days = seen(1);
    EXPECT_EQ(days.rows.size(), sheetOf(sales, clinic_.connection()).rows.size());
    EXPECT_EQ(plainText(days.totals[5]), plainText(sold[6]));
    EXPECT_EQ(plainText(seen(4).totals[3]), plainText(shelf.totals[9])) << "what lies on the shelves";
}

TEST_F(SeenChain, LetsTheClinicsMakeTheSums)
{
    for (const char *view : {"orders_day", "sales_day", "money_day"}) {
        const QString plan = office_
                                 .rows(QStringLiteral("EXPLAIN (VERBOSE, COSTS OFF) SELECT * FROM chain_1.%1 WHERE day "
                                                      "BETWEEN '2026-06-01' AND '2026-06-30'")
                                           .arg(QLatin1String(view)))
                                 .join(u'\n');
        EXPECT_TRUE(plan.startsWith(QLatin1String("Foreign Scan"))) << plan.toStdString();
        EXPECT_TRUE(plan.contains(QRegularExpression(QStringLiteral("Remote SQL: .*sum\\(.*2026-06-01.* GROUP BY"))))
            << plan.toStdString();
    }
    for (const char *view : {"bought", "gone"}) {
        const QString plan =
            office_.rows(QStringLiteral("EXPLAIN (VERBOSE, COSTS OFF) SELECT * FROM chain_1.") + QLatin1String(view))
                .join(u'\n');
        EXPECT_TRUE(plan.startsWith(QLatin1String("Foreign Scan"))) << plan.toStdString();
    }
}

TEST_F(SeenChain, NamesAClinicThatCannotBeReachedAndCountsTheOthers)
{
    const std::vector<std::string> alone = texts(seen().rows[0]);
    const SilentServer silent;
    add("불 꺼진 곳", QStringLiteral("127.0.0.1"), silent.port());
    add("다른 테이블", socketFolder(), 5432, "elsewhere");
    QElapsedTimer waited;
    waited.start();
    const Sheet sheet = seen();
    EXPECT_LT(waited.restart(), 3'000);
    ASSERT_EQ(sheet.rows.size(), 3);
    EXPECT_EQ(texts(sheet.rows[0]), alone);
    EXPECT_EQ(plainText(sheet.rows[1].back()), QStringLiteral("연결 안 됨"));
    EXPECT_EQ(plainText(sheet.rows[1][5]), QString()) << "no figure is none, and not zero";
    EXPECT_EQ(plainText(sheet.rows[2].back()), QStringLiteral("확인 필요"));
    EXPECT_EQ(plainText(sheet.totals[5]).toStdString(), alone[5]);
    EXPECT_TRUE(sheet.remark.startsWith(QStringLiteral("합계에 없는 지점: 불 꺼진 곳, 다른 테이블.")))
        << sheet.remark.toStdString();
    for (const int view : {1, 4})
        seen(view);
    EXPECT_LT(waited.elapsed(), 1'500) << "it is waited for once";
    office_.run("SELECT chain.drop_clinic('불 꺼진 곳')");
    runScript();
    EXPECT_EQ(seen().rows.size(), 2) << "a second run of the script keeps who is known";
}

TEST_F(SeenChain, NamesAClinicWhoseServerGivesAStatementUp)
{
    office_.run("ALTER SERVER chain_1 OPTIONS (ADD options '-c statement_timeout=300')");
    const ado::ConnectionPtr other = clinic_.otherDesk();
    other->BeginTrans();
    for (const char *table : {"tPSOrderMaster", "tPSProductMaster"})
        other->Execute(QStringLiteral("LOCK TABLE %1 IN ACCESS EXCLUSIVE MODE").arg(QLatin1String(table)));
    for (const int view : {0, 4})
        EXPECT_EQ(plainText(seen(view).rows[0].back()), QStringLiteral("확인 필요"));
    other->RollbackTrans();
    desk()->read("SELECT set_config('chain.away_1', (now() + interval '1 hour')::text, false)");
    EXPECT_EQ(plainText(seen().rows[0].back()), QString()) << "away an hour ago, before the clock was set back";
    desk()->Execute("SET statement_timeout = 1"); // of its own
    EXPECT_THAT(refusal([&] { seen(); }), testing::HasSubstr("canceling statement"));
}

TEST_F(SeenChain, ShowsItsDeskFiguresOnly)
{
    EXPECT_TRUE(::chain::seesClinics(desk()));
    EXPECT_FALSE(::chain::seesClinics(clinic_.connection()));
    for (const char *statement : {"SELECT * FROM chain_1.tpsordermaster", "SELECT umoptions FROM pg_user_mapping",
                                  "SELECT chain.drop_clinic('본점')", "SELECT chain.make_views('chain_1')"})
        EXPECT_THAT(refusal([&] { desk()->read(QLatin1String(statement)); }), testing::HasSubstr("permission denied"))
            << statement;
    office_.run("REVOKE USAGE ON SCHEMA chain FROM head_desk");
    EXPECT_FALSE(::chain::seesClinics(desk()));
}

TEST_F(SeenChain, OpensFromTheWindowOfItsDeskAlone)
{
    const QTemporaryDir folder;
    automation::classRegister::setFile(folder.filePath("classes.ini"));
    automation::classRegister::registerLibrary(QCoreApplication::applicationDirPath() + QStringLiteral("/VantoChain"));
    const auto report = [] {
        for (QWidget *window : QApplication::topLevelWidgets()) {
            if (window->isVisible() && window->windowTitle() == QStringLiteral("체인 통계"))
                return window;
        }
        return static_cast<QWidget *>(nullptr);
    };
    for (const TestDatabase *database : {&clinic_, &office_}) {
        desk::DeskWindow window(database->connection());
        window.show();
        QTest::keyClick(&window, Qt::Key_F8);
        EXPECT_EQ(report() != nullptr, database == &office_);
        EXPECT_EQ(window.findChild<QWidget *>(QStringLiteral("cmdChain"))->isVisible(), database == &office_);
        window.close();
        EXPECT_EQ(report(), nullptr) << "it goes with the desk";
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    automation::classRegister::setFile(QString());
}
