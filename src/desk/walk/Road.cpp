#include "desk/walk/Road.h"

#include "desk/walk/LaterMoney.h"
#include "desk/walk/Receipts.h"
#include "desk/walk/Reports.h"
#include "platform/controls/Spoken.h"

#include <QLineEdit>
#include <QRadioButton>

namespace walk {

namespace {

constexpr int QuantityField = 5;
constexpr int DiscountField = 4;

QString shown(Actor &actor, QWidget *window, const QString &name)
{
    return controls::spokenMoney(actor.control<QLineEdit>(window, name)->text());
}

void chooseProduct(Actor &actor, QWidget *sale, int row, const QString &quantity)
{
    actor.clickRow(actor.control<QTableView>(sale, QStringLiteral("tdbSaleProductLists")), row);
    actor.typeInto(actor.control(sale, QStringLiteral("txtSaleProductLists_%1").arg(QuantityField)), quantity);
    actor.say(QStringLiteral("물품 '%1' 선택, 단가 %2, 수량 %3, 총액 %4")
                  .arg(shown(actor, sale, QStringLiteral("txtSaleProductLists_1")),
                       shown(actor, sale, QStringLiteral("txtSaleProductLists_2")), quantity,
                       shown(actor, sale, QStringLiteral("txtSaleProductLists_8"))));
}

/// "추가", answering the question of today's date when it comes.
void addLine(Actor &actor, QWidget *sale, bool questionExpected)
{
    auto *button = actor.control(sale, QStringLiteral("cmdCSAppendDetail"));
    if (!questionExpected) {
        actor.click(button);
        return;
    }
    actor.inModalWindow([&] { actor.click(button); },
                        [&](QWidget *question) {
                            actor.picture(QStringLiteral("question"), question);
                            actor.say(QStringLiteral("오늘 거래가 없다는 물음에 '예'로 답합니다."));
                            const QList<QAbstractButton *> buttons = question->findChildren<QAbstractButton *>();
                            for (QAbstractButton *answer : buttons) {
                                if (answer->text().startsWith(QStringLiteral("예"))) {
                                    actor.click(answer);
                                    return;
                                }
                            }
                            throw Astray(QStringLiteral("the question has no '예'"));
                        });
}

void takeMoney(Actor &actor, QWidget *sale)
{
    actor.inModalWindow(
        [&] { actor.click(actor.control(sale, QStringLiteral("chkCmdAutomateReceipt"))); },
        [&](QWidget *receipt) {
            actor.picture(QStringLiteral("receipt-dialog"), receipt);
            actor.say(QStringLiteral("할인 1,000원과 현금 20,000원을 입력하고 잔액은 미수금에 기록합니다."));
            actor.typeInto(actor.control(receipt, QStringLiteral("txtGeneralHalInMoney")), QStringLiteral("1000"));
            actor.typeInto(actor.control(receipt, QStringLiteral("txtGeneralSuNapMoney_0")), QStringLiteral("20000"));
            actor.click(actor.control(receipt, QStringLiteral("chkGeneralRemainToMisuMoney")));
            actor.picture(QStringLiteral("receipt-filled"), receipt);
            actor.say(QStringLiteral("F12로 저장합니다."));
            actor.press(receipt, Qt::Key_F12);
        });
}

} // namespace

void sellInWindow(Actor &actor, QWidget *sale)
{
    actor.picture(QStringLiteral("sale-window"), sale);
    auto *orders = actor.control<QTableView>(sale, QStringLiteral("tdbCustSaleMaster"));
    const bool customerHasOrders = orders->model()->rowCount() > 0;

    chooseProduct(actor, sale, 2, QStringLiteral("2"));
    actor.picture(QStringLiteral("product-chosen"), sale);
    addLine(actor, sale, customerHasOrders);
    actor.say(QStringLiteral("오늘 날짜의 거래에 판매 내역을 추가했습니다."));

    actor.clickRow(orders, 0);
    chooseProduct(actor, sale, 5, QStringLiteral("1"));
    actor.typeInto(actor.control(sale, QStringLiteral("txtSaleProductLists_%1").arg(DiscountField)),
                   QStringLiteral("500"));
    addLine(actor, sale, false);
    actor.clickRow(orders, 0);
    actor.say(QStringLiteral("판매 내역을 하나 더 추가했습니다. 거래 총액 %1")
                  .arg(shown(actor, sale, QStringLiteral("txtOrderMaster_9"))));
    actor.picture(QStringLiteral("order-with-lines"), sale);

    takeMoney(actor, sale);
    actor.picture(QStringLiteral("money-taken"), sale);
    actor.say(
        QStringLiteral("수납이 기록되었습니다. 미수금 %1").arg(shown(actor, sale, QStringLiteral("txtOrderMaster_7"))));

    printReceipts(actor, sale);
    settleLater(actor, sale);
    goTo(actor, sale, ManageTab);
    actor.picture(QStringLiteral("management"), sale);
    goTo(actor, sale, StatisticsTab);
    lookAtReports(actor, sale);
    goTo(actor, sale, SaleTab);
}

} // namespace walk
