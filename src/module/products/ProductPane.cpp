#include "products/ProductPane.h"

#include "data/clsSQL.h"
#include "forms/FormRow.h"
#include "forms/modFunctions.h"
#include "platform/controls/EventEdge.h"
#include "platform/controls/MessageBox.h"
#include "platform/controls/ShowText.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Log.h"
#include "products/GoneRow.h"
#include "settings/clsProperties.h"

#include <QPointer>

using controls::InformationIcon;
using controls::MsgBox;

namespace {

const QString productEditCode = QStringLiteral("10");
const QString commandTitle = QStringLiteral("판매 물품");

// Stands for no date.
const QDate noDate(1900, 1, 1);

} // namespace

ProductPane::ProductPane(SaleSession &session, PaneShell &shell, QWidget *parent)
    : QWidget(parent)
    , session_(session)
    , shell_(shell)
    , operations_(session)
    , list_(session.rsSaleProductListsManager)
{
    makeList();
    makeStrip();
    makePanel();
    arrange();
    setTabChain({tdbSaleProductListsManager_, chkCmdProdSaleAddEdiDel_[0], chkCmdProdSaleAddEdiDel_[1],
                 chkCmdProdSaleAddEdiDel_[2], txtProSaleInfo_[0], txtProSaleInfo_[1], txtProSaleInfo_[2],
                 dtpProdListAddedDate_, optIsTaxed_[0], optIsTaxed_[1], optIsValid_[0], optIsValid_[1],
                 txtProSaleInfoMemo_, chkCmdSaveProduct_[0], chkCmdSaveProduct_[1]});
    connectControls();
    resetPane();
}

void ProductPane::connectControls()
{
    using controls::RecordsetGrid;
    connect(tdbSaleProductListsManager_, &RecordsetGrid::rowChange, this, &ProductPane::fillPanel);
    // The check column is the only writer of PM_IsHide. The row stays in view until the list is loaded anew.
    controls::onEvent(tdbSaleProductListsManager_, &RecordsetGrid::afterColumnUpdate, this,
                      [this](int) { saveHideMark(); });
    for (int index = 0; index < chkCmdProdSaleAddEdiDel_.size(); ++index)
        chkCmdProdSaleAddEdiDel_[index]->onPush(this, [this, index] { runCommand(index); });
    chkCmdSaveProduct_[0]->onPush(this, [this] { saveProduct(); });
    chkCmdSaveProduct_[1]->onPush(this, [this] { endEdit(); });
}

void ProductPane::saveHideMark()
{
    ado::Recordset &products = *session_.rsSaleProductListsManager;
    try {
        products.Update();
    } catch (const runtime::RuntimeError &error) {
        if (!isConflict(error))
            throw;
        runtime::Attempt attempt;
        attempt([&] { products.Resync(); });
        if (!products.isGone())
            throw;
        runtime::trapped();
        leaveGone();
    }
}

void ProductPane::disableCommands()
{
    for (controls::PushCheck *button : chkCmdProdSaleAddEdiDel_)
        button->setEnabled(false);
}

void ProductPane::loadProductListsManager(bool keepRow)
{
    const QPointer<ProductPane> alive(this); // a row that is shown may open a box
    runtime::Attempt attempt;
    attempt([&] {
        const bool showAll =
            clsProperties().PropValue(QStringLiteral("숨기기체크된판매물품목록감추기")) != QLatin1String("1");
        const QString statement = clsSQL().getProductMasterSQL(showAll);
        if (keepRow && SaleSession::hasCurrent(session_.rsSaleProductListsManager))
            list_.loadAt(statement, session_.rsSaleProductListsManager->bookmark());
        else
            list_.load(statement);
    });
    if (alive && attempt.failed() && !inEdit())
        showNoProduct();
}

void ProductPane::loadIfClosed()
{
    if (!isLoaded())
        loadProductListsManager();
}

/// Whether the product is still there; then it is on view.
bool ProductPane::readListAnew(ProductKey product)
{
    const bool found = list_.requeryQuietlyAt(product.bookmark());
    if (found)
        fillPanel();
    else
        showNoProduct();
    return found;
}

/// Clears more than on an empty list: figures of a product that is gone would be taken for another's.
void ProductPane::showNoProduct()
{
    resetPane();
    stock_->clear();
    emit currentProductChanged({});
}

void ProductPane::leaveGone()
{
    const QString told = leaveGoneRow(list_, QStringLiteral("물품"));
    showNoProduct();
    MsgBox(told, InformationIcon, commandTitle, this);
}

void ProductPane::fillPanel()
{
    if (list_.comesAnew() || inEdit() || !isLoaded())
        return;
    const ado::Recordset &product = *session_.rsSaleProductListsManager;
    if (!product.hasCurrent()) {
        resetPane(); // the stock figures of the last product stay on view
        return;
    }
    if (product.isGone()) {
        leaveGone();
        return;
    }
    using runtime::text;
    controls::showText(txtProSaleInfo_[0], text(product[QStringLiteral("PM_Catagory")]));
    controls::showText(txtProSaleInfo_[1], text(product[QStringLiteral("PM_Name")]));
    txtProSaleInfo_[2]->setText(runtime::Format(product[QStringLiteral("PM_UnitPrice")], runtime::strMoneyFormat));
    txtProSaleInfoMemo_->setText(text(product[QStringLiteral("PM_EtcMemo")]));
    const QVariant taxed = product[QStringLiteral("PM_IsTaxed")];
    if (!runtime::isNull(taxed)) // NULL keeps what the options showed
        optIsTaxed_[runtime::isTrue(taxed) ? 0 : 1]->setChecked(true);
    optIsValid_[runtime::isTrue(product[QStringLiteral("PM_IsValid")]) ? 0 : 1]->setChecked(true);
    // Enabled and never disabled again outside an edit; what is picked there is overwritten by the next row.
    dtpProdListAddedDate_->setEnabled(true);
    const QVariant added = product[QStringLiteral("PM_AddedDate")];
    dtpProdListAddedDate_->setDate(runtime::isNull(added) ? noDate : added.toDate());

    const QPointer<ProductPane> alive(this); // a purchase that is shown may open a box
    const ProductKey key(product.bookmark());
    emit currentProductChanged(key);
    if (alive)
        stock_->loadStockFigures(key);
}

void ProductPane::resetPane()
{
    txtProSaleInfo_[0]->clear();
    txtProSaleInfo_[1]->clear();
    txtProSaleInfo_[2]->setText(runtime::money({}));
    txtProSaleInfoMemo_->clear();
    optIsTaxed_[0]->setChecked(true);
    optIsValid_[0]->setChecked(true);
    dtpProdListAddedDate_->setDate(noDate);
}

void ProductPane::runCommand(int index)
{
    struct Command
    {
        void (ProductPane::*run)();
        QString failure;
    };
    const Command commands[] = {
        {&ProductPane::addProduct, QStringLiteral("판매 물품 추가를 하지 못했습니다.")},
        {&ProductPane::editProduct, QStringLiteral("판매 물품 수정을 하지 못했습니다.")},
        {&ProductPane::deleteProduct, QStringLiteral("판매 물품 삭제를 하지 못했습니다.")},
    };
    if (!isLoaded())
        return;
    // Chosen before it is called: GCC 12's sanitizers lose the index of a member function called straight out of a table.
    const Command &command = commands[index];
    const QPointer<ProductPane> alive(this);
    try {
        (this->*command.run)();
    } catch (const runtime::RuntimeError &) {
        runtime::trapped();
        MsgBox(command.failure, InformationIcon, commandTitle, alive);
    }
}

void ProductPane::addProduct()
{
    intProductEditMode_ = 0;
    resetPane();
    shell_.enterEditMode(productEditCode);
    txtProSaleInfo_[0]->setFocus();
}

void ProductPane::editProduct()
{
    intProductEditMode_ = 1;
    if (!session_.rsSaleProductListsManager->hasCurrent())
        return;
    edited_ = operations_.beginChange();
    shell_.enterEditMode(productEditCode);
    txtProSaleInfo_[0]->setFocus();
    selectAllText(txtProSaleInfo_[0]);
}

void ProductPane::deleteProduct()
{
    if (!session_.rsSaleProductListsManager->hasCurrent())
        return;
    const ProductKey product(session_.rsSaleProductListsManager->bookmark());
    const QString title = QStringLiteral("물품목록삭제");
    const QPointer<ProductPane> alive(this);
    if (MsgBox(QStringLiteral("선택한 물품을 삭제 하시겠습니까?"), controls::YesNo | InformationIcon, title, this)
            != controls::Answer::Yes
        || !alive)
        return;
    const ProductOperations::Deletion deletion = operations_.remove(product);
    if (deletion == ProductOperations::Deletion::Gone)
        leaveGone();
    if (deletion != ProductOperations::Deletion::Sold)
        return;
    MsgBox(QStringLiteral("물품이 이미 판매 되었으므로 삭제 할 수 없습니다.\r\n"
                          "   ('고객 판매 디테일'에서 삭제를 원하시는 물품을 모두 삭제하시면 \r\n"
                          "    물품 삭제가 가능합니다.)"),
           InformationIcon, title, this);
}

ProductEdit ProductPane::typed() const
{
    return {txtProSaleInfo_[0]->text(),   txtProSaleInfo_[1]->text(),  txtProSaleInfo_[2]->text(),
            txtProSaleInfoMemo_->text(),  optIsTaxed_[0]->isChecked(), optIsValid_[0]->isChecked(),
            dtpProdListAddedDate_->date()};
}

void ProductPane::saveProduct()
{
    const bool changes = intProductEditMode_ == 1;
    SaveOutcome outcome = SaveOutcome::Saved;
    if (intProductEditMode_ == 0)
        outcome = operations_.add(typed());
    else if (changes)
        outcome = operations_.change(typed());
    const QPointer<ProductPane> alive(this);
    if (outcome == SaveOutcome::Refused) {
        MsgBox(QStringLiteral("분류 또는 물품명이 비어있습니다"), controls::ConfirmOnly, QString(), this);
        if (alive)
            txtProSaleInfo_[0]->setFocus();
        return;
    }
    const bool failed = outcome == SaveOutcome::Failed;
    if (failed)
        MsgBox(QStringLiteral("저장을 하지 못했습니다. 서버와의 연결을 확인하십시오."), InformationIcon,
               QStringLiteral("저장"), this);
    if (alive)
        endEdit(failed && changes ? edited_ : ProductKey());
}

/// Errors are trapped: the edit ends even if the list cannot be read.
void ProductPane::endEdit(ProductKey product)
{
    shell_.leaveEditMode(productEditCode);
    shell_.paintEntryColors();
    const QPointer<ProductPane> alive(this); // a row that is shown may open a box
    runtime::Attempt attempt;
    attempt([&] {
        if (!isLoaded())
            loadProductListsManager();
        else if (product)
            readListAnew(product);
        else
            session_.rsSaleProductListsManager->Requery();
    });
    if (!alive)
        return;
    tdbSaleProductListsManager_->setFocus();
    intProductEditMode_ = -1;
}

bool ProductPane::abandonEdit()
{
    const bool open = inEdit();
    if (open)
        endEdit();
    return open;
}
