#include "desk/walk/Receipts.h"
#include "platform/registry/AppSettings.h"
#include "tests/support/Paper.h"
#include "tests/whole/SaleDesk.h"

#include <QDateEdit>

namespace {

class ReceiptsInWindow : public testing::Test
{
protected:
    void SetUp() override
    {
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        // A printer of this name is a file.
        registry::SaveSetting(QStringLiteral("Zelvo Desk"), QStringLiteral("젤보 데스크"),
                              QStringLiteral("영수증프린터디바이스"), file("roll.pdf"));
    }
    void addOrder(int count)
    {
        auto &database = desk_.database;
        database.run("INSERT INTO tPSOrderMaster (Cust_PK, OrdM_Date, OrdM_Gubun, OrdM_TaxTotal, OrdM_TaxFreeTotal, "
                     "OrdM_HalinTotal, OrdM_Total, OrdM_Misugum) VALUES (7, '2026-03-02', 1, 0, 0, 0, 0, 0)");
        database.run(
            QStringLiteral("INSERT INTO tPSOrderDetail (OrdM_PK, PM_PK, OrdD_UnitPrice, OrdD_HalinUnit, OrdD_Count, "
                           "OrdD_OrderType) VALUES (1, 1, 1000, 0, %1, 0)")
                .arg(count));
    }
    QString file(const char *name) const { return desk_.actor.folder() + QLatin1Char('/') + QLatin1String(name); }

    SaleDesk desk_;
};

} // namespace

TEST_F(ReceiptsInWindow, ComeFromTheirButtons)
{
    addOrder(3);
    desk_.open();
    desk_.choose("tdbCustSaleMaster", 0);
    desk_.control<QDateEdit>("uxStartDateDTP")->setDate(QDate(2026, 3, 1));
    desk_.actor.inModalWindow([&] { desk_.click("chkCmdPrintReceipt_0"); },
                              [&](QWidget *preview) {
                                  EXPECT_EQ(preview->objectName().toStdString(), "frmPrinter");
                                  EXPECT_EQ(preview->windowTitle().toStdString(), "영수증출력");
                                  EXPECT_TRUE(preview->isMaximized());
                                  EXPECT_TRUE(preview->findChild<QWidget *>("vsPrint"));
                                  desk_.actor.press(preview, Qt::Key_Escape);
                                  EXPECT_FALSE(preview->isVisible());
                              });
    walk::printReceipts(desk_.actor, desk_.window());
    EXPECT_TRUE(desk_.boxes.messages.isEmpty()) << desk_.boxes.texts().join(u'\n').toStdString();
    const Paper period(file("period.pdf"));
    EXPECT_EQ(period.line(65).toStdString(),
              "남궁보람님 (구매날짜: 2026-03-01 ~ " + QDate::currentDate().toString(Qt::ISODate).toStdString() + ")");
    EXPECT_EQ(period.line(104).toStdString(), "2026-03-02 001 감초차 일반판매");
    EXPECT_EQ(Paper(file("receipt.pdf")).line(112).toStdString(), "*가 1,000 0 3 3,000");
    EXPECT_TRUE(Paper(file("roll.pdf")).has("001감초차"));
}
