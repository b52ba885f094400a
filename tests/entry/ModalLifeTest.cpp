#include "tests/entry/EntryDesk.h"

#include "tests/support/WheelTurns.h"

#include <QFile>
#include <QFileDialog>
#include <QPointer>
#include <QRegularExpression>
#include <QTimer>

#include <gmock/gmock.h>

#include <functional>
#include <utility>

namespace {

/// One box, dialog or preview, and the way there: a name to press, "grid row" to choose, "tab number" to turn to.
struct Standing
{
    const char *what;
    const char *way;    ///< on the window, separated by ", "; what stands after ">" is pressed in the dialog that came
    const char *expect; ///< object name, or title, of what stands at last
};

constexpr Standing standings[] = {
    {"the question before an order is deleted", "tdbCustSaleMaster 0, chkCmdOrderMasterED_1", "판매 마스터 삭제"},
    {"the question before a line is deleted", "tdbCustSaleMaster 0, tdbCustSaleDetails 0, chkCmdDelOrderDetail",
     "판매 상세 내역"},
    {"the question before a product is deleted", "tab 1, tdbSaleProductListsManager 0, chkCmdProdSaleAddEdiDel_2",
     "물품목록삭제"},
    {"the question before a purchase is deleted",
     "tab 1, tdbSaleProductListsManager 0, tdbProductIncoming 0, chkcmdIncomingAED_2", "삭제"},
    {"the question before a dealer is deleted", "tab 1, tdbCompanyMaster 0, chkcmdCmpnyMstrAED_2", "거래처삭제"},
    {"the question for today's date", "tdbCustSaleMaster 0, tdbSaleProductLists 0, cmdCSAppendDetail", "판매"},
    {"the first payment", "tdbCustSaleMaster 1, chkCmdAutomateReceipt", "frmSimpleReceipt"},
    {"the question whether a settled order takes more", "tdbCustSaleMaster 0, chkCmdAutomateReceipt", "수납 내역 추가"},
    {"a further payment", "tdbCustSaleMaster 2, chkCmdAutomateReceipt", "frmSimpleReceiptAdd"},
    {"the box of a further payment that is no number",
     "tdbCustSaleMaster 2, chkCmdAutomateReceipt > txtMoney=x, cmdConfirm", "추가 수납"},
    {"the change of a payment", "tdbCustSaleMaster 0, tdbCustTranManage 0, chkcmdAddEditDelTran_1", "frmSimpleReceipt"},
    {"the box of an empty ledger", "tdbCustSaleMaster 1, chkcmdAddEditDelTran_1", "물품판매관리"},
    {"a return", "tdbCustSaleMaster 0, tdbCustSaleDetails 0, chkCmdRefund", "frmRefund"},
    {"the box of a return that is no number",
     "tdbCustSaleMaster 0, tdbCustSaleDetails 0, chkCmdRefund > txtRfndUnitCount=x, chkCmdSave", "반품"},
    {"the outstanding money", "tdbCustSaleMaster 0, chkCmdRunMisuMoneyManger", "frmMisuMoneyManager"},
    {"a payment of outstanding money",
     "tdbCustSaleMaster 0, chkCmdRunMisuMoneyManger > dgReceiptView 0, cmdMisuMoneyPay", "frmMisuMoneyPay"},
    {"the choice of a dealer", "tab 1, tdbSaleProductListsManager 0, chkcmdIncomingAED_0, chkCmdIncSelectCompany",
     "frmDealerSelect"},
    {"the preview of a receipt", "tdbCustSaleMaster 0, chkCmdPrintReceipt_0", "frmPrinter"},
    {"the file for the receipt", "tdbCustSaleMaster 0, chkCmdPrintReceipt_0 > cmdSavePdf", "PDF로 저장"},
    {"the question whether to replace the receipt", "tdbCustSaleMaster 0, chkCmdPrintReceipt_0 > cmdSavePdf > replace",
     "PDF로 저장"},
    {"the box of a product without a name", "tab 1, chkCmdProdSaleAddEdiDel_0, chkCmdSaveProduct_0", "물품판매관리"},
    {"the box of a purchase without a dealer",
     "tab 1, tdbSaleProductListsManager 0, chkcmdIncomingAED_0, chkcmdIncomingSave_0", "물품구매내역"},
    {"the box of a dealer without a name", "tab 1, chkcmdCmpnyMstrAED_0, chkcmdCmpnyMstrSave_0", "거래처목록"},
    {"the logo's file", "tab 3, chkCmdChooseLog", "그림파일 선택"},
    {"the question before the grids are reset", "tab 3, cmdGridReset", "물품판매관리"},
};

/// Boxes that a handler deep in the window's own work opens, after another desk or a broken server.
const struct
{
    Standing standing;
    const char *undo;
} troubles[] = {
    {{"the box of lines that cannot be read",
      "elsewhere ALTER TABLE tPSOrderDetail RENAME TO away, tdbCustSaleMaster 1", "데이터 가져오기"},
     "ALTER TABLE away RENAME TO tPSOrderDetail"},
    {{"the box of products that cannot be read at an entry",
      "elsewhere ALTER TABLE tPSProductMaster RENAME TO away, enter", "데이터 가져오기"},
     "ALTER TABLE away RENAME TO tPSProductMaster"},
    {{"the box of orders that cannot be read at an entry", "elsewhere ALTER TABLE tPSOrderMaster RENAME TO away, enter",
      "데이터 가져오기"},
     "ALTER TABLE away RENAME TO tPSOrderMaster"},
    {{"the box of a statistic that is not installed", "tab 2", "통계 실행 오류"}, ""},
    {{"the box of a cell that cannot be saved",
      "tdbCustSaleMaster 0, elsewhere UPDATE tPSOrderMaster SET OrdM_Misugum = OrdM_Misugum + 1, owe 55",
      "물품판매관리"},
     ""},
    {{"the box of an order that is gone", "elsewhere DELETE FROM tPSOrderMaster WHERE OrdM_PK = 4, tdbCustSaleMaster 2",
      "거래 선택"},
     ""},
};

/// The window with real boxes: nobody answers for the user.
class ModalLife : public EntryDesk
{
protected:
    ModalLife()
    {
        controls::setMessageHandler({});
        fillShop();
        database_.run("INSERT INTO Customer (Customer_PK, name, sn) VALUES (7, '남궁보람', 'A-00007')");
        // The third order owes still, after a payment.
        database_.run("INSERT INTO tPSOrderMaster (Cust_PK, OrdM_Date, OrdM_Gubun, OrdM_TaxTotal, OrdM_TaxFreeTotal, "
                      "OrdM_HalinTotal, OrdM_Total, OrdM_Misugum) VALUES (7, '2026-02-28', 1, 9000, 0, 0, 9000, 4000)");
        database_.run("INSERT INTO tPSTransaction (tpstrans_Customer_PK, tpstrans_OrderM_PK, tpstrans_Date, "
                      "tpstrans_Operator, tpstrans_Money, tpstrans_Method) VALUES (7, 4, '2026-02-28', 3, 5000, '00')");
        QFile old(pdf());
        EXPECT_TRUE(old.open(QIODevice::WriteOnly));
    }

    QString pdf() const { return folder_.filePath(QStringLiteral("있는 파일.pdf")); }

    /// Goes the way of it and does something once it stands; returns when everything has ended.
    void under(const Standing &standing, const std::function<void(QWidget *)> &act)
    {
        sell();
        way_ = QString::fromUtf8(standing.way).split(QStringLiteral(" > "));
        act_ = [&](QWidget *modal) {
            EXPECT_THAT((QStringList{modal->objectName(), modal->windowTitle()}),
                        testing::Contains(QString::fromUtf8(standing.expect)));
            act(modal);
        };
        stood_ = nullptr;
        watch();
        go(window(), way_.takeFirst());
        EXPECT_FALSE(act_) << "nothing stood";
        act_ = nullptr;
        settle();
    }

private:
    void watch()
    {
        QTimer::singleShot(5, qApp, [this] {
            QWidget *modal = QApplication::activeModalWidget();
            const bool stands = modal && modal != stood_;
            if (act_ && (!stands || !way_.isEmpty()))
                watch();
            if (!act_ || !stands)
                return;
            stood_ = modal;
            if (way_.isEmpty())
                std::exchange(act_, nullptr)(modal);
            else
                go(modal, way_.takeFirst());
        });
    }
    void go(QWidget *place, const QString &way)
    {
        for (const QString &step : way.split(QStringLiteral(", "))) {
            const QString name = step.section(QRegularExpression(QStringLiteral("[ =]")), 0, 0);
            const QString rest = step.mid(name.size() + 1);
            if (name == QLatin1String("elsewhere")) {
                database_.run(rest);
            } else if (name == QLatin1String("enter")) {
                sell();
            } else if (name == QLatin1String("owe")) {
                typeInto(place->findChild<QTableView *>(QStringLiteral("tdbCustSaleMaster")), rest);
            } else if (name == QLatin1String("tab")) {
                press(tabs()->tabBar(), tabs()->tabBar()->tabRect(rest.toInt()).center());
            } else if (name == QLatin1String("replace")) {
                static_cast<QFileDialog *>(place)->selectFile(pdf());
                static_cast<QDialog *>(place)->accept();
            } else if (auto *grid = place->findChild<QTableView *>(name)) {
                chooseIn(grid, rest.toInt());
            } else if (auto *box = place->findChild<QLineEdit *>(name)) {
                box->setText(rest);
            } else {
                auto *button = place->findChild<QAbstractButton *>(name);
                ASSERT_TRUE(button) << step.toStdString();
                QTest::mouseClick(button, Qt::LeftButton); // returns when what it opened has ended
            }
        }
    }
    static void chooseIn(QTableView *view, int row)
    {
        int column = 0;
        while (view->isColumnHidden(column))
            ++column;
        ASSERT_LT(row, view->model()->rowCount());
        const QModelIndex cell = view->model()->index(row, column);
        press(view->viewport(), view->visualRect(cell).center());
    }
    static void press(QWidget *control, const QPoint &place)
    {
        const QPointer<QWidget> alive(control);
        QTest::mousePress(alive, Qt::LeftButton, {}, place);
        if (alive)
            QTest::mouseRelease(alive, Qt::LeftButton, {}, place);
    }

    static void typeInto(QTableView *view, const QString &text)
    {
        QTest::keyClick(view, Qt::Key_F2);
        auto *cell = view->viewport()->findChild<QLineEdit *>();
        ASSERT_TRUE(cell);
        QTest::keyClicks(cell, text);
        QTest::keyClick(cell, Qt::Key_Return);
        QTest::qWait(20);
    }

    QStringList way_;
    std::function<void(QWidget *)> act_; ///< empty when it is done
    QPointer<QWidget> stood_;
};

} // namespace

TEST_F(ModalLife, TheHostMayDeleteTheWindowUnderWhateverStands)
{
    for (const Standing &standing : standings) {
        SCOPED_TRACE(standing.what);
        under(standing, [](QWidget *) { delete window(); });
        EXPECT_FALSE(window());
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    }
    for (const auto &trouble : troubles) {
        SCOPED_TRACE(trouble.standing.what);
        under(trouble.standing, [](QWidget *) { delete window(); });
        EXPECT_FALSE(window());
        if (*trouble.undo)
            database_.run(trouble.undo);
    }
    sell();
    EXPECT_TRUE(isUp()) << "the next entry makes a new one";
}

TEST_F(ModalLife, TheProgramMayBeLeftUnderWhateverStands)
{
    for (const bool politely : {true, false}) {
        for (const Standing &standing : standings) {
            SCOPED_TRACE(std::string(standing.what) + (politely ? ", the host quits" : ", the host's loop ends"));
            QTimer::singleShot(0, qApp, [&] {
                under(standing, [politely](QWidget *) { politely ? QApplication::quit() : QCoreApplication::exit(0); });
            });
            QTimer::singleShot(20'000, qApp, [] { QCoreApplication::exit(1); });
            EXPECT_EQ(QApplication::exec(), 0);
            EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
            close();
            EXPECT_FALSE(window());
        }
    }
}

TEST_F(ModalLife, TheWheelTurnsNothingThatItPassesOver)
{
    for (const Standing &standing : standings) {
        if (QLatin1String(standing.expect).startsWith(QLatin1String("frm")))
            under(standing, [](QWidget *modal) {
                EXPECT_EQ(turnedByWheel(modal).toStdString(), "");
                delete window();
            });
    }
    sell();
    for (int tab : {0, 1}) {
        tabs()->setCurrentIndex(tab);
        EXPECT_EQ(turnedByWheel(window()).toStdString(), "");
    }
}
