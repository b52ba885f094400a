#include "desk/window/DeskWindow.h"
#include "platform/controls/RecordsetGrid.h"
#include "tests/whole/LayoutFaults.h"
#include "tests/whole/SaleDesk.h"

#include <QHeaderView>
#include <QLabel>
#include <QScreen>
#include <QTabWidget>

namespace {

/// What a desk's screen measures in pixels at 96 dpi; the last of them is one of 1366 x 768 at 125 %.
constexpr QSize deskSizes[] = {{1920, 1080}, {1366, 768}, {1280, 720}, {1093, 614}};

// Rows of the orders: one of the longest sums with a payment, and one of usual sums without.
enum OrderRow { paid, unpaid };

/// What a desktop leaves of a screen: less a bar of its own and the window's caption.
QSize roomOn(const QSize &desk)
{
    constexpr int bar = 32;
    constexpr int caption = 28;
    return desk - QSize(0, bar + caption);
}

class Layout : public testing::Test
{
protected:
    Layout()
    {
        runFile(desk_.database, "whole/stale.sql");
        runFile(desk_.database, "whole/layout.sql");
        desk_.open();
        desk_.choose("tdbCustSaleMaster", paid);
        desk_.choose("tdbCustSaleDetails", 0);
        desk_.choose("tdbSaleProductLists", 1);
    }

    /// Of every size that a desk has.
    static void expectSound(QWidget *window, const char *what)
    {
        for (const QSize &desk : deskSizes) {
            // Pixels are finer where fonts are larger.
            const QSize room = roomOn(desk) * window->logicalDpiX() / 96;
            window->setWindowState(Qt::WindowNoState);
            const bool fixed = window->minimumSize() == window->maximumSize();
            if (!fixed)
                window->resize(room);
            // Folding and splitters come to rest in several turns, fewer of them in a given time on a busy machine.
            QStringList faults;
            for (int turn = 0; turn == 0 || (turn < 20 && !faults.isEmpty()); ++turn) {
                walk::settle(50);
                faults = layoutFaults(window);
            }
            const std::string where = std::string(what) + " on " + std::to_string(desk.width());
            EXPECT_LE(window->width(), room.width()) << where;
            EXPECT_LE(window->height(), room.height()) << where;
            EXPECT_EQ(faults.join(u'\n').toStdString(), "") << where;
        }
    }
    void goTo(int tab)
    {
        desk_.control<QTabWidget>("c1tabMain")->setCurrentIndex(tab);
        walk::settle();
    }
    void enlarge(const QSize &desk)
    {
        desk_.window()->resize(desk);
        walk::settle(50);
    }

    SaleDesk desk_;
};

double timesLarger(const QWidget *control)
{
    return control->font().bold() ? control->font().pointSizeF() / QApplication::font().pointSizeF() : 0;
}

} // namespace

TEST_F(Layout, IsSoundInEveryTabAndEditOnEveryDesk)
{
    const struct
    {
        int tab;
        const char *edit; ///< null for none
        const char *cancel;
    } states[] = {
        {0, nullptr, nullptr},
        {0, "chkCmdOrderMasterED_0", "chkcmdCSSaveInfo_1"},
        {1, nullptr, nullptr},
        {1, "chkCmdProdSaleAddEdiDel_1", "chkCmdSaveProduct_1"},
        {1, "chkcmdIncomingAED_1", "chkcmdIncomingSave_1"},
        {1, "chkcmdCmpnyMstrAED_1", "chkcmdCmpnyMstrSave_1"},
        {2, nullptr, nullptr},
        {3, nullptr, nullptr},
    };
    for (const auto &state : states) {
        goTo(state.tab);
        const QHash<QString, QRect> before = placesOf(desk_.window());
        if (state.edit)
            desk_.click(state.edit);
        const QHash<QString, QRect> places = placesOf(desk_.window());
        for (auto place = places.begin(); place != places.end(); ++place) {
            EXPECT_EQ(before.value(place.key(), place.value()), place.value())
                << place.key().toStdString() << " jumps when " << state.edit << " starts an edit";
        }
        expectSound(desk_.window(), state.edit ? state.edit : "tab");
        if (state.cancel)
            desk_.click(state.cancel);
    }
}

TEST_F(Layout, IsSoundInEveryDialogOnEveryDesk)
{
    const struct
    {
        const char *button;
        int order; ///< that is chosen before
    } dialogs[] = {
        {"chkCmdAutomateReceipt", unpaid},  {"chkCmdAutomateReceipt", paid}, {"chkcmdAddEditDelTran_1", paid},
        {"chkCmdRunMisuMoneyManger", paid}, {"chkCmdRefund", paid},          {"chkCmdPrintReceipt_0", paid},
    };
    for (const auto &dialog : dialogs) {
        desk_.choose("tdbCustSaleMaster", dialog.order);
        if (QTableView *ledger = desk_.grid("tdbCustTranManage"); ledger->model()->rowCount() > 0)
            desk_.choose("tdbCustTranManage", 0);
        desk_.choose("tdbCustSaleDetails", 0);
        desk_.in(dialog.button, [&](QWidget *window) {
            expectSound(window, dialog.button);
            if (auto *list = window->findChild<QTableView *>(QStringLiteral("dgReceiptView"))) {
                desk_.actor.clickRow(list, 0);
                desk_.actor.inModalWindow([&] { desk_.press(window, "cmdMisuMoneyPay"); },
                                          [](QWidget *payment) { expectSound(payment, "cmdMisuMoneyPay"); });
            }
        });
    }
    goTo(1);
    desk_.click("chkcmdIncomingAED_1");
    desk_.in("chkCmdIncSelectCompany", [](QWidget *dealers) { expectSound(dealers, "chkCmdIncSelectCompany"); });
    desk_.click("chkcmdIncomingSave_1");

    desk::DeskWindow reception(desk_.database.connection());
    reception.show();
    expectSound(&reception, "desk");
}

TEST_F(Layout, WhatIsReadFromAStepAwayIsLarge)
{
    const std::pair<const char *, double> texts[] = {
        {"txtCustDetail_0", 1.4},  {"txtCustDetail_1", 1.4},    {"txtOrderMaster_7", 1.5},
        {"txtOrderMaster_9", 1.5}, {"txtTranTotalAmount", 1.5}, {"txtSaleProductLists_8", 1.5},
    };
    desk_.choose("tdbSaleProductLists", 0);
    desk_.choose("tdbCustSaleMaster", unpaid); // with sums of a usual length
    enlarge({1366, 768});
    for (const auto &[name, factor] : texts)
        EXPECT_NEAR(timesLarger(desk_.control(name)), factor, 0.05) << name;

    desk_.in("chkCmdAutomateReceipt", [](QWidget *receipt) {
        for (const QWidget *control : receipt->findChildren<QWidget *>()) {
            const QString name = control->objectName();
            if (name != u"lblMustReceipt_2" && name != u"lblGeneralRemain") {
                EXPECT_LT(control->font().pointSizeF(),
                          receipt->findChild<QLabel *>("lblMustReceipt_2")->font().pointSizeF())
                    << name.toStdString();
            }
        }
        EXPECT_EQ(receipt->findChild<QLabel *>("lblMustReceipt_2")->font(),
                  receipt->findChild<QLabel *>("lblGeneralRemain")->font());
    });
}

TEST_F(Layout, NamesTakeTheRoomUntilAColumnIsDragged)
{
    const auto syllables = [&](const char *grid, int column) {
        const QTableView *list = desk_.grid(grid);
        return (list->columnWidth(column) - 7) * 20 / list->fontMetrics().horizontalAdvance(QString(20, QChar(u'가')));
    };
    enlarge({1366, 720});
    EXPECT_GE(syllables("tdbSaleProductLists", 1), 20);
    QHeaderView *head = desk_.grid("tdbSaleProductLists")->horizontalHeader();
    enlarge({1920, 1000});
    EXPECT_GE(syllables("tdbSaleProductLists", 1), 20);
    EXPECT_EQ(head->length(), head->viewport()->width()) << "no room is left over, and the remark is in sight";

    const QPoint divider(head->sectionViewportPosition(0) + head->sectionSize(0) - 1, head->height() / 2);
    QTest::mousePress(head->viewport(), Qt::LeftButton, {}, divider);
    QTest::mouseMove(head->viewport(), divider + QPoint(20, 0));
    QTest::mouseRelease(head->viewport(), Qt::LeftButton, {}, divider + QPoint(20, 0));
    const int chosen = syllables("tdbSaleProductLists", 1);
    enlarge({1366, 720});
    EXPECT_EQ(syllables("tdbSaleProductLists", 1), chosen) << "a user's own widths stay";
}
