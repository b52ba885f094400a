#include "bench/far/Deeds.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QTimer>

namespace bench {

namespace {

void click(SaleWindow &window, const char *button)
{
    QTest::mouseClick(&window.control<QAbstractButton>(button), Qt::LeftButton);
    untilPainted();
}

/// Clicks a button that opens a dialog; works in it as soon as it is painted and leaves it with F12.
void clickThrough(SaleWindow &window, const char *button, const std::function<void(QWidget &)> &work)
{
    auto &opener = window.control<QAbstractButton>(button);
    QTimer::singleShot(0, &opener, [&] {
        QWidget *const dialog = QApplication::activeModalWidget();
        if (!dialog)
            return;
        untilPainted();
        work(*dialog);
        if (dialog->isVisible())
            QTest::keyClick(dialog, Qt::Key_F12);
    });
    QTest::mouseClick(&opener, Qt::LeftButton);
    untilPainted();
}

void type(QWidget &field, const char *keys)
{
    field.setFocus();
    QTest::keyClick(&field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(&field, QLatin1String(keys));
}

void type(QWidget &dialog, const char *box, const char *keys)
{
    auto *const field = dialog.findChild<QWidget *>(QLatin1String(box));
    if (!field)
        throw std::runtime_error(std::string(box) + " is missing");
    type(*field, keys);
}

void press(SaleWindow &window, const char *grid, Qt::Key key)
{
    controls::RecordsetGrid &rows = window.grid(grid);
    rows.setFocus();
    QTest::keyClick(&rows, key);
    untilPainted();
}

void chooseFirstOrder(SaleWindow &window)
{
    press(window, "tdbCustSaleMaster", Qt::Key_Home);
}

void chooseFirstProduct(SaleWindow &window)
{
    press(window, "tdbSaleProductLists", Qt::Key_Home);
}

void chooseFirstLine(SaleWindow &window)
{
    chooseFirstOrder(window);
    press(window, "tdbCustSaleDetails", Qt::Key_Home);
}

void showTab(SaleWindow &window, int tab)
{
    window.control<QTabWidget>("c1tabMain").setCurrentIndex(tab);
    untilPainted();
}

void addLine(SaleWindow &window)
{
    click(window, "cmdCSAppendDetail");
}

void payFirst(SaleWindow &window)
{
    clickThrough(window, "chkCmdAutomateReceipt", [](QWidget &dialog) {
        type(dialog, "txtGeneralSuNapMoney_0", "1000");
        QTest::mouseClick(dialog.findChild<QAbstractButton *>(QStringLiteral("chkGeneralRemainToMisuMoney")),
                          Qt::LeftButton);
    });
}

void payFurther(SaleWindow &window)
{
    clickThrough(window, "chkCmdAutomateReceipt", [](QWidget &dialog) { type(dialog, "txtMoney", "500"); });
}

void takeBack(SaleWindow &window)
{
    clickThrough(window, "chkCmdRefund", [](QWidget &dialog) {
        QTest::mouseClick(dialog.findChild<QAbstractButton *>(QStringLiteral("chkCmdSave")), Qt::LeftButton);
    });
}

void editAndSave(SaleWindow &window)
{
    click(window, "chkCmdOrderMasterED_0");
    type(window.control<QLineEdit>("txtOrderMaster_2"), "1 far away");
    click(window, "chkcmdCSSaveInfo_0");
}

} // namespace

const std::vector<Deed> &deeds()
{
    const auto down = [](const char *grid) {
        return [grid](SaleWindow &window) { press(window, grid, Qt::Key_Down); };
    };
    static const std::vector<Deed> all{
        {"another order", 2, "its row, lines, ledger and balance; the names in the lines", down("tdbCustSaleMaster"),
         false, chooseFirstOrder},
        {"another product", 0, "nothing is asked", down("tdbSaleProductLists"), false, chooseFirstProduct},
        {"add a line, with a new order of today", 9,
         "is there one; was a backup restored; the order; its row, commit and which it is; locks; line and check; "
         "commit and sums; totals, commit and all that is shown; the names in the lines",
         addLine, true, chooseFirstProduct},
        {"add a line to the order", 6,
         "is there one; locks; line and check; commit and sums; totals, commit and all that is shown; the names in the "
         "lines",
         addLine, true},
        {"first payment", 3,
         "what is owed and how the dialog is set up; lock and what is owed now; row, commit and lists", payFirst, true,
         chooseFirstOrder},
        {"further payment", 3,
         "what is owed, what was paid and how the dialog is set up; lock and what is owed now; row, commit, order and "
         "lists",
         payFurther, true, chooseFirstOrder},
        {"return", 9,
         "the name for the dialog; locks; the note; its row, commit and the order of the day; locks; line and check; "
         "commit and sums; totals, commit and all that is shown; the names in the lines",
         takeBack, true, chooseFirstLine},
        {"edit an order and save", 4,
         "lock and row; what was typed; its row, commit and all that is shown; the names in the lines", editAndSave,
         true, chooseFirstOrder},
        {"delete an order", 4,
         "locks, lines and ledger; deletions and all that is shown; commit, lines, ledger and balance; the names in "
         "the "
         "lines",
         [](SaleWindow &window) { click(window, "chkCmdOrderMasterED_1"); }, true, chooseFirstOrder},
        {"a patient's outstanding list", 3, "the list; when it is closed, all that is shown; the names in the lines",
         [](SaleWindow &window) { clickThrough(window, "chkCmdRunMisuMoneyManger", [](QWidget &) {}); }},
        {"the management's tab, first time", 4,
         "which products; the products; purchases and stock of the first, dealers; who sold the first purchase",
         [](SaleWindow &window) { showTab(window, 1); }},
        {"back to the sale", 1, "the products and the names in the lines",
         [](SaleWindow &window) { showTab(window, 0); }},
    };
    return all;
}

} // namespace bench
