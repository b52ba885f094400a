#include "products/SaleListPane.h"

#include "data/clsSQL.h"
#include "platform/ado/Foresight.h"
#include "platform/controls/EventEdge.h"
#include "platform/controls/MessageBox.h"
#include "platform/controls/Named.h"
#include "platform/runtime/Log.h"
#include "platform/runtime/RuntimeError.h"
#include "session/modGlobalVars.h"

#include <QVBoxLayout>

#include <utility>

namespace {

std::vector<controls::GridColumn> saleListColumns()
{
    using Kind = controls::GridColumn::Kind;
    // clang-format off
    return {
        {.field = QStringLiteral("PM_Catagory"), .caption = QStringLiteral("분류"), .width = 58},
        {.field = QStringLiteral("PM_Name"), .caption = QStringLiteral("물품명"), .width = 74, .fills = true},
        {.field = QStringLiteral("PM_IsTaxed"), .caption = QStringLiteral("과세"), .kind = Kind::Check},
        {.field = QStringLiteral("PM_IsValid"), .caption = QStringLiteral("취급여부"), .kind = Kind::Check},
        {.field = QStringLiteral("PM_UnitPrice"), .caption = QStringLiteral("판매단가(원)"), .kind = Kind::Money},
        {.field = QStringLiteral("PM_EtcMemo"), .caption = QStringLiteral("메모"), .width = 120},
    };
    // clang-format on
}

controls::FindBar::Design saleListSearch()
{
    return {.name = QStringLiteral("Product"),
            .what = QStringLiteral("물품"),
            .placeholder = QStringLiteral("물품 검색 (초성, 이름, 분류, 메모)"),
            .fields = {QStringLiteral("PM_Name"), QStringLiteral("PM_Catagory"), QStringLiteral("PM_EtcMemo")},
            .codeField = QStringLiteral("PM_EtcMemo")};
}

} // namespace

SaleListPane::SaleListPane(SaleSession &session, QWidget *parent)
    : QObject(parent)
    , session_(session)
    , list_(session.rsSaleProductLists, ado::CursorType::Static, ado::LockType::ReadOnly)
    , c1elaList_(controls::named(new QWidget(parent), QStringLiteral("c1elaList"), 0))
    , tdbSaleProductLists_(
          controls::named(new controls::RecordsetGrid(c1elaList_), QStringLiteral("tdbSaleProductLists")))
    , search_(new controls::FindBar(tdbSaleProductLists_, saleListSearch(), c1elaList_))
{
    list_.setGrid(tdbSaleProductLists_);
    auto *layout = new QVBoxLayout(c1elaList_);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(search_);
    layout->addWidget(tdbSaleProductLists_);
    tdbSaleProductLists_->setAccessibleName(QStringLiteral("물품 목록"));
    tdbSaleProductLists_->setColumns(saleListColumns());
    tdbSaleProductLists_->setEmptyText(QStringLiteral("판매할 물품이 없습니다. 판매물품관리에서 물품을 추가하십시오."));

    using controls::RecordsetGrid;
    controls::onEvent(tdbSaleProductLists_, &RecordsetGrid::rowChange, this, [this] { emit productRowChanged(); });
    controls::onEvent(tdbSaleProductLists_, &RecordsetGrid::headClick, this, [this](int column) { sortBy(column); });
    connect(search_, &controls::FindBar::codeEntered, this, &SaleListPane::productCodeEntered);
}

void SaleListPane::createSaleProductLists()
{
    search_->clear();
    auto rows = std::make_unique<ado::Recordset>();
    rows->openWithKeptRows();
    list_.create(std::move(rows));
}

void SaleListPane::loadSaleProductLists()
{
    try {
        list_.load(clsSQL().getProductMasterSQL(false));
    } catch (const runtime::RuntimeError &) {
        runtime::trapped();
        emit productRowChanged();
        controls::MsgBox(QStringLiteral("물품 목록을 가져오지 못했습니다."), controls::InformationIcon,
                         QStringLiteral("데이터 가져오기"), c1elaList_);
    }
}

void SaleListPane::requerySaleProductLists()
{
    if (!gcnnMasterDB)
        return; // a window that was shown without a customer
    if (isLoaded())
        list_.requery();
    else
        loadSaleProductLists();
}

void SaleListPane::tellSaleProductLists(ado::Foresight &next)
{
    next.open(clsSQL().getProductMasterSQL(false), ado::CursorType::Static);
}

/// Quirk (docs/architecture.md): the numbers are one off the grid's columns. A click on the name sorts by category, one
/// on the remark by price; staff have learned it so.
void SaleListPane::sortBy(int column)
{
    struct HeaderSort
    {
        int column;
        const char *field;
        bool *descending;
    };
    const HeaderSort sorts[] = {
        {1, "PM_Catagory", &bSortCatagoryDesc_},
        {2, "PM_Name", &bSortNameDesc_},
        {5, "PM_UnitPrice", &bSortPriceDesc_},
    };
    if (!isLoaded())
        return;
    for (const HeaderSort &sort : sorts) {
        if (sort.column != column)
            continue;
        const QLatin1String direction(std::exchange(*sort.descending, !*sort.descending) ? " DESC" : " ASC");
        session_.rsSaleProductLists->Sort(QLatin1String(sort.field) + direction);
        return;
    }
}
