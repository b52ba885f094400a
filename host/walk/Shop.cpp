#include "host/walk/Shop.h"

#include <QLineEdit>
#include <QTabWidget>

namespace walk {

namespace {

enum Tab { SaleTab = 0, ManageTab = 1, PropertiesTab = 3 };

struct Entry
{
    const char *field;
    const char *text;
};

void goTo(Actor &actor, QWidget *sale, Tab tab)
{
    actor.control<QTabWidget>(sale, QStringLiteral("c1tabMain"))->setCurrentIndex(tab);
    settle();
}

void click(Actor &actor, QWidget *sale, const char *button)
{
    actor.click(actor.control(sale, QString::fromLatin1(button)));
}

void fillIn(Actor &actor, QWidget *sale, std::initializer_list<Entry> entries)
{
    for (const Entry &entry : entries)
        actor.typeInto(actor.control(sale, QString::fromLatin1(entry.field)), QString::fromUtf8(entry.text));
}

void addDealer(Actor &actor, QWidget *sale)
{
    click(actor, sale, "chkcmdCmpnyMstrAED_0");
    fillIn(actor, sale, {{"txtCmCompanyName", "가온약초"}, {"txtCmTel", "02-555-0100"}, {"txtCmRegNum", "105-81-00001"}});
    actor.picture(QStringLiteral("dealer-typed"), sale);
    click(actor, sale, "chkcmdCmpnyMstrSave_0");
    actor.say(QStringLiteral("거래처 '가온약초'를 올렸습니다."));
}

void addProduct(Actor &actor, QWidget *sale)
{
    click(actor, sale, "chkCmdProdSaleAddEdiDel_0");
    fillIn(actor, sale, {{"txtProSaleInfo_0", "가공차"}, {"txtProSaleInfo_1", "감초생강차"}, {"txtProSaleInfo_2", "12000"}});
    actor.picture(QStringLiteral("product-typed"), sale);
    click(actor, sale, "chkCmdSaveProduct_0");
    actor.say(QStringLiteral("물품 '감초생강차'를 12,000원에 올렸습니다."));
    actor.clickCell(actor.control<QTableView>(sale, QStringLiteral("tdbSaleProductListsManager")), QStringLiteral("감초생강차"));
}

void addPurchase(Actor &actor, QWidget *sale)
{
    click(actor, sale, "chkcmdIncomingAED_0");
    fillIn(actor, sale, {{"txtIncCount", "30"}, {"txtIncPricePerUnit", "8000"}, {"txtIncHalinTotal", "10000"}});
    actor.inModalWindow([&] { click(actor, sale, "chkCmdIncSelectCompany"); },
                        [&](QWidget *dialog) {
                            auto *dealers = actor.control<QTableView>(dialog, QStringLiteral("tdbDealerSelect"));
                            actor.clickCell(dealers, QStringLiteral("가온약초"));
                            actor.picture(QStringLiteral("dealer-dialog"), dialog);
                            actor.press(dialog, Qt::Key_F12);
                        });
    actor.picture(QStringLiteral("purchase-typed"), sale);
    click(actor, sale, "chkcmdIncomingSave_0");
    click(actor, sale, "cmdRefreshProdStat");
    actor.say(QStringLiteral("30개를 들였습니다. 나머지 %1")
                  .arg(actor.control<QLineEdit>(sale, QStringLiteral("txtProdStat_2"))->text()));
    actor.picture(QStringLiteral("stock"), sale);
}

} // namespace

void keepShopInWindow(Actor &actor, QWidget *sale)
{
    goTo(actor, sale, ManageTab);
    actor.picture(QStringLiteral("management"), sale);
    addDealer(actor, sale);
    addProduct(actor, sale);
    addPurchase(actor, sale);

    goTo(actor, sale, PropertiesTab);
    fillIn(actor, sale, {{"txtProperties_0", "가온한의원 매점"}, {"txtProperties_1", "김가온"}, {"txtProperties_5", "02-555-0199"}});
    click(actor, sale, "chkCmdSaveProperties");
    actor.say(QStringLiteral("지점 정보를 저장했습니다."));
    actor.picture(QStringLiteral("properties"), sale);

    goTo(actor, sale, SaleTab);
    actor.clickCell(actor.control<QTableView>(sale, QStringLiteral("tdbSaleProductLists")), QStringLiteral("감초생강차"));
    actor.say(QStringLiteral("새 물품이 판매 목록에 올랐습니다."));
    actor.picture(QStringLiteral("new-product-for-sale"), sale);
}

} // namespace walk
