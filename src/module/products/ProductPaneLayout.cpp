#include "data/clsSQL.h"
#include "forms/FormRow.h"
#include "platform/controls/Appearance.h"
#include "platform/controls/EventEdge.h"
#include "platform/controls/Named.h"
#include "products/ProductPane.h"
#include "session/modGlobalVars.h"

#include <QSplitter>
#include <QVBoxLayout>

namespace {

using controls::GridColumn;

std::vector<GridColumn> managerColumns()
{
    using Kind = GridColumn::Kind;
    return {
        {QStringLiteral("PM_IsHide"), QStringLiteral("숨기기"), Kind::Check, 0, true, true},
        {QStringLiteral("PM_Catagory"), QStringLiteral("분류"), Kind::Text, 74},
        {.field = QStringLiteral("PM_Name"), .caption = QStringLiteral("물품명"), .width = 160, .fills = true},
        {QStringLiteral("PM_UnitPrice"), QStringLiteral("판매단가(원)"), Kind::Money},
        {QStringLiteral("PM_IsTaxed"), QStringLiteral("과세"), Kind::Check},
        {QStringLiteral("PM_IsValid"), QStringLiteral("취급여부"), Kind::Check},
        {QStringLiteral("PM_EtcMemo"), QStringLiteral("메모"), Kind::Text, 130},
    };
}

controls::FindBar::Design managerSearch()
{
    return {.name = QStringLiteral("ProductManager"),
            .what = QStringLiteral("물품"),
            .placeholder = QStringLiteral("물품 검색 (초성, 이름, 분류, 메모)"),
            .fields = {},
            .reading = [] { return gcnnMasterDB->read(clsSQL::getProductTextsSQL()); }};
}

QGroupBox *makeOptions(const QString &title, const QString &name, const QStringList &captions,
                       std::array<QRadioButton *, 2> &options)
{
    auto *frame = new QGroupBox(title);
    auto *row = new QHBoxLayout(frame);
    for (int index = 0; index < 2; ++index) {
        options[std::size_t(index)] = controls::named(new QRadioButton(captions[index]), name, index);
        options[std::size_t(index)]->setAccessibleName(captions[index]);
        row->addWidget(options[std::size_t(index)]);
    }
    row->addStretch();
    return frame;
}

} // namespace

void ProductPane::makeControls()
{
    makeList(QStringLiteral("sspPMProductList"), -1, QStringLiteral("판매 물품 목록"),
             QStringLiteral("tdbSaleProductListsManager"), managerColumns());
    makeSearch(managerSearch());
    makeListTools();
    makePanel(QStringLiteral("sspPMProductInfo"), -1);
    makeStrip(2, QStringLiteral("chkCmdProdSaleAddEdiDel"), QStringLiteral("chkCmdSaveProduct"),
              QStringLiteral("저 장"));
    stock_ = new StockBox(session_);
    auto *fields = new QHBoxLayout;
    fields->addLayout(makeFields(), 1);
    fields->addWidget(stock_);
    placeInPanel(fields);
}

/// Beside the search, in the frame that an edit puts out of reach.
void ProductPane::makeListTools()
{
    cmdPrintProductList_ =
        controls::named(new QPushButton(QStringLiteral("인쇄")), QStringLiteral("cmdPrintProductList"));
    cmdPrintProductList_->setAccessibleName(QStringLiteral("물품 목록 인쇄"));
    cmdPrintProductList_->setToolTip(QStringLiteral("목록을 분류별로 인쇄"));
    cmdSaveProductList_ =
        controls::named(new QPushButton(QStringLiteral("Excel용 저장")), QStringLiteral("cmdSaveProductList"));
    cmdSaveProductList_->setAccessibleName(QStringLiteral("물품 목록 Excel용 저장"));
    cmdSaveProductList_->setToolTip(QStringLiteral("목록을 CSV 파일로 저장"));
    listFrame_->layout()->removeWidget(search_);
    auto *row = new QHBoxLayout;
    row->addWidget(search_, 1);
    for (QPushButton *button : {cmdPrintProductList_, cmdSaveProductList_}) {
        button->setAutoDefault(false);
        row->addWidget(button);
    }
    static_cast<QVBoxLayout *>(listFrame_->layout())->insertLayout(0, row);
    controls::onEvent(cmdPrintProductList_, &QPushButton::clicked, this, [this](bool) { printList(); });
    controls::onEvent(cmdSaveProductList_, &QPushButton::clicked, this, [this](bool) { saveList(); });
}

QGridLayout *ProductPane::makeFields()
{
    const QString name = QStringLiteral("txtProSaleInfo");
    txtProSaleInfo_[0] = controls::named(new MoneyBox({.onFocus = OnFocus::CaretToEnd}), name, 0);
    txtProSaleInfo_[1] = controls::named(new MoneyBox({.onFocus = OnFocus::SelectAll}), name, 1);
    txtProSaleInfo_[2] = controls::named(new MoneyBox, name, 2);
    txtProSaleInfoMemo_ = controls::named(new MemoBox({.onFocus = OnFocus::CaretToEnd}), name, 3);
    dtpProdListAddedDate_ = controls::named(new controls::DateEdit, QStringLiteral("dtpProdListAddedDate"));

    auto *form = new QGridLayout;
    addFormRow(form, 0, 0, QStringLiteral("분류:"), txtProSaleInfo_[0]);
    addFormRow(form, 0, 2, QStringLiteral("물품명:"), txtProSaleInfo_[1]);
    addFormRow(form, 1, 0, QStringLiteral("판매단가:"), txtProSaleInfo_[2]);
    addFormRow(form, 1, 2, QStringLiteral("등록 날짜:"), dtpProdListAddedDate_);
    form->addWidget(makeOptions(QStringLiteral("과세/비과세 선택"), QStringLiteral("optIsTaxed"),
                                {QStringLiteral("과세"), QStringLiteral("비과세")}, optIsTaxed_),
                    2, 0, 1, 2);
    form->addWidget(makeOptions(QStringLiteral("취급/취급안함 선택"), QStringLiteral("optIsValid"),
                                {QStringLiteral("취급"), QStringLiteral("취급안함")}, optIsValid_),
                    2, 2, 1, 2);
    addFormRow(form, 3, 0, QStringLiteral("메모:"), txtProSaleInfoMemo_, 3);
    form->setColumnStretch(1, 2);
    form->setColumnStretch(3, 3);
    form->setRowStretch(3, 1);
    return form;
}

void ProductPane::arrange()
{
    auto *split = new QSplitter(Qt::Vertical, this);
    split->setChildrenCollapsible(false);
    split->addWidget(listFrame_);
    split->addWidget(panel_);
    split->setStretchFactor(0, 1);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(split);
}

ControlGroup ProductPane::editGroup() const
{
    const ControlGroup colProSaleInfo{txtProSaleInfo_[0],  txtProSaleInfo_[1],    txtProSaleInfo_[2],
                                      txtProSaleInfoMemo_, dtpProdListAddedDate_, optIsTaxed_[0],
                                      optIsTaxed_[1],      optIsValid_[0],        optIsValid_[1],
                                      saveButtons_[0],     saveButtons_[1]};
    return colProSaleInfo;
}

QList<EntryColor> ProductPane::fieldColors() const
{
    const auto required = controls::Ground::Needed;
    const auto window = controls::Ground::Field;
    const auto face = controls::Ground::Face;
    return {
        {txtProSaleInfo_[0], required},
        {txtProSaleInfo_[1], required},
        {txtProSaleInfo_[2], required},
        {txtProSaleInfoMemo_, window},
        {optIsTaxed_[0], face},
        {optIsTaxed_[1], face},
        {optIsValid_[0], face},
        {optIsValid_[1], face},
        {stock_->txtProdStat()[0], window},
        {stock_->txtProdStat()[1], window},
        {stock_->txtProdStat()[2], window},
    };
}
