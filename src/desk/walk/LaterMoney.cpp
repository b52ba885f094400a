#include "desk/walk/LaterMoney.h"

#include "platform/controls/Spoken.h"

#include <QComboBox>
#include <QLineEdit>
#include <QLocale>

namespace walk {

namespace {

QString shown(Actor &actor, QWidget *window, const char *name)
{
    return controls::spokenMoney(actor.control<QLineEdit>(window, QString::fromLatin1(name))->text());
}

void chooseOrder(Actor &actor, QWidget *sale)
{
    actor.clickRow(actor.control<QTableView>(sale, QStringLiteral("tdbCustSaleMaster")), 0);
}

/// Presses a button of the window and works in the dialog that comes.
void inDialogOf(Actor &actor, QWidget *window, const char *button, const std::function<void(QWidget *)> &work)
{
    actor.inModalWindow([&] { actor.click(actor.control(window, QString::fromLatin1(button))); }, work);
}

void payByCard(Actor &actor, QWidget *sale)
{
    chooseOrder(actor, sale);
    inDialogOf(actor, sale, "chkCmdAutomateReceipt", [&](QWidget *receipt) {
        actor.typeInto(actor.control(receipt, QStringLiteral("txtMoney")), QStringLiteral("50000"));
        actor.control<QComboBox>(receipt, QStringLiteral("cboPayMothod"))->setFocus(Qt::TabFocusReason);
        actor.press(receipt, Qt::Key_Down);
        actor.picture(QStringLiteral("second-payment"), receipt);
        actor.press(receipt, Qt::Key_F12);
    });
    actor.say(QStringLiteral("카드로 50,000원을 더 받았습니다. 미수금 %1").arg(shown(actor, sale, "txtOrderMaster_7")));
}

void takeBackALine(Actor &actor, QWidget *sale)
{
    actor.clickRow(actor.control<QTableView>(sale, QStringLiteral("tdbCustSaleDetails")), 0);
    inDialogOf(actor, sale, "chkCmdRefund", [&](QWidget *refund) {
        actor.typeInto(actor.control(refund, QStringLiteral("txtRfndMemo")), QStringLiteral("포장을 열지 않음"));
        actor.picture(QStringLiteral("return"), refund);
        actor.click(actor.control(refund, QStringLiteral("chkCmdSave")));
    });
    chooseOrder(actor, sale);
    actor.say(
        QStringLiteral("판매 내역 하나를 반품했습니다. 거래 총액 %1").arg(shown(actor, sale, "txtOrderMaster_9")));
}

void collectOutstanding(Actor &actor, QWidget *sale)
{
    inDialogOf(actor, sale, "chkCmdRunMisuMoneyManger", [&](QWidget *list) {
        actor.clickRow(actor.control<QTableView>(list, QStringLiteral("dgReceiptView")), 0);
        inDialogOf(actor, list, "cmdMisuMoneyPay", [&](QWidget *payment) {
            actor.typeInto(actor.control(payment, QStringLiteral("txtGeneralSunap")), QStringLiteral("40500"));
            actor.picture(QStringLiteral("outstanding-payment"), payment);
            actor.press(payment, Qt::Key_F12);
        });
        actor.picture(QStringLiteral("outstanding-list"), list);
        actor.press(list, Qt::Key_F12);
    });
    actor.say(QStringLiteral("미수금 40,500원을 받았습니다. 미수금 %1").arg(shown(actor, sale, "txtOrderMaster_7")));
}

void payOut(Actor &actor, QWidget *sale)
{
    chooseOrder(actor, sale);
    inDialogOf(actor, sale, "chkCmdAutomateReceipt", [&](QWidget *receipt) {
        actor.picture(QStringLiteral("refund"), receipt);
        const int over = shown(actor, receipt, "txtMoney").toInt();
        actor.say(QStringLiteral("더 받은 금액을 환불합니다: %1원").arg(QLocale(QLocale::Korean).toString(over)));
        actor.press(receipt, Qt::Key_F12);
    });
    actor.picture(QStringLiteral("settled"), sale);
}

} // namespace

void settleLater(Actor &actor, QWidget *sale)
{
    payByCard(actor, sale);
    takeBackALine(actor, sale);
    collectOutstanding(actor, sale);
    payOut(actor, sale);
}

} // namespace walk
