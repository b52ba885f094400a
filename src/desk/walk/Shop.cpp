#include "desk/walk/Shop.h"

#include "desk/walk/Receipts.h"
#include "platform/controls/Palette.h"

#include <QDir>
#include <QImage>
#include <QLineEdit>
#include <QPainter>

namespace walk {

namespace {

struct Entry
{
    const char *field;
    const char *text;
};

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
    fillIn(actor, sale,
           {{"txtCmCompanyName", "가온약초"}, {"txtCmTel", "02-555-0100"}, {"txtCmRegNum", "105-81-00001"}});
    actor.picture(QStringLiteral("dealer-typed"), sale);
    click(actor, sale, "chkcmdCmpnyMstrSave_0");
    actor.say(QStringLiteral("거래처를 추가했습니다: 가온약초"));
}

void addProduct(Actor &actor, QWidget *sale)
{
    click(actor, sale, "chkCmdProdSaleAddEdiDel_0");
    fillIn(actor, sale,
           {{"txtProSaleInfo_0", "가공차"}, {"txtProSaleInfo_1", "감초생강차"}, {"txtProSaleInfo_2", "12000"}});
    actor.picture(QStringLiteral("product-typed"), sale);
    click(actor, sale, "chkCmdSaveProduct_0");
    actor.say(QStringLiteral("물품을 추가했습니다: 감초생강차, 판매단가 12,000원"));
    actor.clickCell(actor.control<QTableView>(sale, QStringLiteral("tdbSaleProductListsManager")),
                    QStringLiteral("감초생강차"));
}

/// Asks for the stock and shows it; the units that are left must be as told.
void lookAtStock(Actor &actor, QWidget *sale, const QString &pictureName, const QString &left)
{
    click(actor, sale, "cmdRefreshProdStat");
    const QString shown = actor.control<QLineEdit>(sale, QStringLiteral("txtProdStat_2"))->text();
    if (shown != left)
        throw Astray(QStringLiteral("the stock is %1, not %2").arg(shown, left));
    actor.say(QStringLiteral("재고를 새로 고칩니다. 나머지 %1").arg(shown));
    actor.picture(pictureName, sale);
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
    actor.say(QStringLiteral("구매를 기록했습니다: 30개"));
    lookAtStock(actor, sale, QStringLiteral("stock"), QStringLiteral("30"));
}

/// A picture as a shop would have one, drawn here.
QString drawnLogo(const Actor &actor)
{
    QImage logo(210, 44, QImage::Format_RGB32);
    logo.fill(controls::colors(controls::Ground::Paper).back);
    QPainter painter(&logo);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(controls::colors(controls::Ground::Paper).text);
    painter.setBrush(controls::colors(controls::Ground::Paper).text);
    painter.drawEllipse(4, 4, 36, 36);
    QFont font = painter.font();
    font.setPixelSize(24);
    font.setBold(true);
    painter.setFont(font);
    painter.drawText(QRect(52, 0, 158, 44), Qt::AlignVCenter, QStringLiteral("가온 지점"));
    painter.end();
    const QString file = QDir(actor.folder()).absoluteFilePath(QStringLiteral("logo.bmp"));
    if (!logo.save(file))
        throw Astray(QStringLiteral("'%1' was not written").arg(file));
    return file;
}

void fillInShopData(Actor &actor, QWidget *sale)
{
    goTo(actor, sale, PropertiesTab);
    fillIn(actor, sale,
           {{"txtProperties_0", "가온한의원 지점"},
            {"txtProperties_1", "김가온"},
            {"txtProperties_2", "105-81-00002"},
            {"txtProperties_4", "서울특별시 마포구 월드컵로 1"},
            {"txtProperties_5", "02-555-0199"},
            {"txtProperties_7", "영수증을 보관해 주십시오."}});
    click(actor, sale, "chkCmdSaveProperties");
    const QString logo = drawnLogo(actor);
    actor.inModalWindow([&] { click(actor, sale, "chkCmdChooseLog"); },
                        [&](QWidget *dialog) {
                            actor.control<QLineEdit>(dialog, QStringLiteral("fileNameEdit"))->setText(logo);
                            actor.press(dialog, Qt::Key_Return);
                        });
    actor.say(QStringLiteral("지점 정보를 저장하고 영수증 로고를 선택했습니다."));
    actor.picture(QStringLiteral("properties"), sale);
}

void sellFirst(Actor &actor, QWidget *sale)
{
    goTo(actor, sale, SaleTab);
    actor.clickCell(actor.control<QTableView>(sale, QStringLiteral("tdbSaleProductLists")),
                    QStringLiteral("감초생강차"));
    fillIn(actor, sale, {{"txtSaleProductLists_5", "3"}});
    click(actor, sale, "cmdCSAppendDetail");
    actor.clickRow(actor.control<QTableView>(sale, QStringLiteral("tdbCustSaleMaster")), 0);
    actor.inModalWindow([&] { click(actor, sale, "chkCmdAutomateReceipt"); },
                        [&](QWidget *receipt) {
                            fillIn(actor, receipt, {{"txtGeneralSuNapMoney_0", "36000"}});
                            actor.press(receipt, Qt::Key_F12);
                        });
    actor.say(QStringLiteral("새 물품 3개를 팔고 현금 36,000원을 받았습니다."));
    actor.picture(QStringLiteral("first-sale"), sale);
    printRoll(actor, sale, QStringLiteral("first-roll"));
}

} // namespace

void openShopInWindow(Actor &actor, QWidget *sale)
{
    if (actor.control<QTableView>(sale, QStringLiteral("tdbSaleProductLists"))->model()->rowCount() != 0)
        throw Astray(QStringLiteral("the shop is not empty"));
    goTo(actor, sale, ManageTab);
    actor.picture(QStringLiteral("empty-shop"), sale);
    addDealer(actor, sale);
    addProduct(actor, sale);
    addPurchase(actor, sale);
    fillInShopData(actor, sale);
    sellFirst(actor, sale);
    goTo(actor, sale, ManageTab);
    lookAtStock(actor, sale, QStringLiteral("stock-after-sale"), QStringLiteral("27"));
}

} // namespace walk
