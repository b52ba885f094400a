#include "products/ProductPane.h"

#include "data/clsSQL.h"
#include "forms/FormRow.h"
#include "forms/modFunctions.h"
#include "platform/controls/EventEdge.h"
#include "platform/controls/FileDialog.h"
#include "platform/controls/MessageBox.h"
#include "platform/controls/Modal.h"
#include "platform/controls/ShowText.h"
#include "platform/print/PreviewWindow.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Log.h"
#include "products/GoneRow.h"
#include "session/modGlobalVars.h"
#include "settings/clsProperties.h"

#include <QPointer>
#include <QSaveFile>

using controls::InformationIcon;
using controls::MsgBox;

namespace {

const QString commandTitle = QStringLiteral("판매 물품");
const QString listTitle = QStringLiteral("판매 물품 목록");

const QString hidesChecked = QStringLiteral("숨기기체크된판매물품목록감추기");

// Stands for no date.
const QDate noDate(1900, 1, 1);

} // namespace

ProductPane::ProductPane(SaleSession &session, PaneShell &shell, QWidget *parent)
    : RecordEditor(session, shell, session.rsSaleProductListsManager,
                   {editCode::Product, QStringLiteral("물품"), commandTitle}, parent)
    , operations_(session)
{
    makeControls();
    arrange();
    setTabChain({grid_, cmdPrintProductList_, cmdSaveProductList_, commands_[Add], commands_[Edit], commands_[Delete],
                 txtProSaleInfo_[0], txtProSaleInfo_[1], txtProSaleInfo_[2], dtpProdListAddedDate_, optIsTaxed_[0],
                 optIsTaxed_[1], optIsValid_[0], optIsValid_[1], txtProSaleInfoMemo_, saveButtons_[0],
                 saveButtons_[1]});
    connectControls();
    // The check column is the only writer of PM_IsHide. The row stays in view until the list is loaded anew.
    controls::onEvent(grid_, &controls::RecordsetGrid::afterColumnUpdate, this, [this](int) { saveHideMark(); });
    ProductPane::resetPane();
}

void ProductPane::saveHideMark()
{
    ado::Recordset &products = *rows_;
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

/// Read anew: what other desks wrote since is in it, and the list itself keeps its row.
std::vector<PriceLine> ProductPane::readPriceList() const
{
    ado::Recordset products;
    products.Open(listStatement(), gcnnMasterDB, ado::CursorType::Static, ado::LockType::ReadOnly);
    return priceList(products);
}

void ProductPane::printList()
{
    const std::vector<PriceLine> lines = readPriceList();
    const controls::Modal<print::PreviewWindow> preview(
        this, QStringLiteral("판매 물품 목록 인쇄"),
        print::PrinterMemory{QStringLiteral("Zelvo Desk"), QStringLiteral("물품판매관리")});
    preview->vsPrint()->setDocument(priceListOnPaper(lines, clsProperties().PropValue(QStringLiteral("지점명"))),
                                    listTitle);
    controls::runModal(preview.get());
}

void ProductPane::saveList()
{
    const QByteArray content = priceListCsv(readPriceList());
    const QString path =
        controls::askSaveFile(this, QStringLiteral("Excel용 저장"),
                              listTitle + u' ' + runtime::dateText(QDate::currentDate()) + QStringLiteral(".csv"),
                              QStringLiteral("CSV 파일 (*.csv)"), QStringLiteral("csv"));
    if (path.isEmpty())
        return;
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.commit())
        throw runtime::RuntimeError(runtime::ErrorNumber::InvalidCall,
                                    QStringLiteral("파일을 저장하지 못했습니다: %1\n%2").arg(path, file.errorString()));
}

void ProductPane::disableCommands()
{
    for (controls::PushCheck *button : commands_)
        button->setEnabled(false);
}

QString ProductPane::listStatement() const
{
    return clsSQL().getProductMasterSQL(clsProperties().PropValue(hidesChecked) != QLatin1String("1"));
}

void ProductPane::tellChoice(ado::Foresight &next)
{
    clsProperties::tell(next, hidesChecked);
}

void ProductPane::loadProductListsManager(bool keepRow)
{
    const QPointer<ProductPane> alive(this); // a row that is shown may open a box
    runtime::Attempt attempt;
    attempt([&] {
        const QString statement = listStatement();
        if (keepRow && hasRow())
            list_.loadAt(statement, rows_->bookmark());
        else
            list_.load(statement);
    });
    if (alive && attempt.failed() && !inEdit())
        showNone();
}

/// Clears more than on an empty list: figures of a product that is gone would be taken for another's.
void ProductPane::showNone()
{
    resetPane();
    stock_->clear();
    emit currentProductChanged({});
}

void ProductPane::showRow(const ado::Recordset &product)
{
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
    const ado::Foresight standing(gcnnMasterDB); // the stock may come with the purchase's dealer
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

void ProductPane::run(Command command)
{
    const QString failures[] = {
        QStringLiteral("판매 물품 추가를 하지 못했습니다."),
        QStringLiteral("판매 물품 수정을 하지 못했습니다."),
        QStringLiteral("판매 물품 삭제를 하지 못했습니다."),
    };
    if (!isLoaded())
        return;
    const QPointer<ProductPane> alive(this);
    try {
        RecordEditor::run(command);
    } catch (const runtime::RuntimeError &) {
        runtime::trapped();
        MsgBox(failures[command], InformationIcon, commandTitle, alive);
    }
}

void ProductPane::addRow()
{
    mode_ = Adds;
    resetPane();
    enterEdit(txtProSaleInfo_[0]);
}

void ProductPane::editRow()
{
    mode_ = Changes;
    if (!hasRow())
        return;
    edited_ = operations_.beginChange();
    enterEdit(txtProSaleInfo_[0]);
    selectAllText(txtProSaleInfo_[0]);
}

void ProductPane::deleteRow()
{
    if (!hasRow())
        return;
    const ProductKey product(rows_->bookmark());
    const QString title = QStringLiteral("물품목록삭제");
    if (!agrees(QStringLiteral("선택한 물품을 삭제 하시겠습니까?"), title))
        return;
    const ProductOperations::Deletion deletion = operations_.remove(product);
    if (deletion == ProductOperations::Deletion::Gone)
        leaveGone();
    if (deletion == ProductOperations::Deletion::Deleted)
        tellDone(QStringLiteral("삭제"));
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

void ProductPane::saveRow()
{
    const bool changes = mode_ == Changes;
    SaveOutcome outcome = SaveOutcome::Saved;
    if (mode_ == Adds)
        outcome = operations_.add(typed());
    else if (changes)
        outcome = operations_.change(typed());
    if (outcome == SaveOutcome::Refused)
        refuse(QStringLiteral("분류 또는 물품명이 비어있습니다"), controls::ConfirmOnly, QString(), txtProSaleInfo_[0]);
    else
        endSave(outcome, changes ? edited_.bookmark() : ado::Bookmark());
}
