#include "sales/DetailPane.h"

#include "data/Codes.h"
#include "data/clsSQL.h"
#include "forms/FormRow.h"
#include "forms/clsMyFunctions.h"
#include "platform/controls/Appearance.h"
#include "platform/controls/EventEdge.h"
#include "platform/controls/MessageBox.h"
#include "platform/controls/Named.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Log.h"
#include "platform/runtime/Operation.h"
#include "platform/runtime/RuntimeError.h"

#include <QHBoxLayout>
#include <QPointer>
#include <QVBoxLayout>

#include <algorithm>

using controls::InformationIcon;
using controls::MsgBox;
using controls::named;
using controls::PushCheck;
using controls::RecordsetGrid;

namespace {

std::vector<controls::GridColumn> detailColumns()
{
    using Kind = controls::GridColumn::Kind;
    controls::GridColumn kind{
        .field = QStringLiteral("OrdD_OrderType"), .caption = QStringLiteral("판매종류"), .kind = Kind::Values};
    // A code 3, which nothing writes, shows as it is.
    kind.values = {{QString(), sale::lineTypeText(sale::NormalSale)}};
    for (const sale::LineType code : sale::lineTypes)
        kind.values.push_back({QString::number(code), sale::lineTypeText(code)});
    // clang-format off
    return {
        {.field = QStringLiteral("OrdD_PK"), .caption = QStringLiteral("OrdD_PK"), .visible = false},
        {.field = QStringLiteral("OrdM_PK"), .caption = QStringLiteral("OrdM_PK"), .visible = false},
        {.field = QString(), .caption = QStringLiteral("물품명"), .kind = Kind::Unbound, .width = 150, .fills = true},
        {.field = QStringLiteral("OrdD_Count"), .caption = QStringLiteral("수량"), .kind = Kind::Number},
        {.field = QStringLiteral("OrdD_UnitPrice"), .caption = QStringLiteral("판매단가"), .kind = Kind::Money},
        {.field = QStringLiteral("OrdD_HalinUnit"), .caption = QStringLiteral("단가할인"), .kind = Kind::Money},
        kind,
        {.field = QStringLiteral("OrdD_RfndMemo"), .caption = QStringLiteral("환불정보"), .width = 160},
    };
    // clang-format on
}

} // namespace

DetailPane::DetailPane(SaleSession &session, QWidget *parent)
    : QObject(parent)
    , session_(session)
    , operations_(session)
    , list_(session.rsCustSaleDetails)
    , c1elaList_(named(new QWidget(parent), QStringLiteral("c1elaList"), 2))
    , c1elaSaleDetailMemo_(named(new QWidget(parent), QStringLiteral("c1elaSaleDetailMemo")))
    , tdbCustSaleDetails_(named(new RecordsetGrid(c1elaList_), QStringLiteral("tdbCustSaleDetails")))
    , chkCmdRefund_(named(new PushCheck(QStringLiteral("반품"), c1elaList_), QStringLiteral("chkCmdRefund")))
    , chkCmdDelOrderDetail_(
          named(new PushCheck(QStringLiteral("삭제"), c1elaList_), QStringLiteral("chkCmdDelOrderDetail")))
    , txtCustOrderRfndMemo_(named(new MemoBox({}, c1elaSaleDetailMemo_), QStringLiteral("txtCustOrderRfndMemo")))
{
    list_.setGrid(tdbCustSaleDetails_);
    tdbCustSaleDetails_->setAccessibleName(QStringLiteral("판매 내역"));
    tdbCustSaleDetails_->setColumns(detailColumns());
    tdbCustSaleDetails_->setEmptyText(QStringLiteral("판매 내역이 없습니다. 거래를 선택하거나 물품을 추가하십시오."));
    tdbCustSaleDetails_->setUnboundFetch([this](const ado::Bookmark &row, int) { return productName(row); });
    clsMyFunctions::keepReadOnly(txtCustOrderRfndMemo_);
    placeControls();

    controls::onEvent(tdbCustSaleDetails_, &RecordsetGrid::rowChange, this, [this] { rowChanged(); });
    controls::onEvent(tdbCustSaleDetails_, &RecordsetGrid::rowDoubleClicked, this, [this] { doubleClicked(); });
    chkCmdRefund_->onPush(this, [this] { askRefund(); });
    chkCmdDelOrderDetail_->onPush(this, [this] { deleteDetail(); });
}

void DetailPane::placeControls()
{
    auto *strip = new QHBoxLayout;
    strip->setSpacing(4);
    strip->addWidget(chkCmdRefund_);
    strip->addStretch(1);
    strip->addWidget(chkCmdDelOrderDetail_);
    auto *list = new QVBoxLayout(c1elaList_);
    list->setContentsMargins(0, 0, 0, 0);
    list->setSpacing(2);
    list->addLayout(strip);
    list->addWidget(tdbCustSaleDetails_, 1);

    addFormRow(makeFormGrid(c1elaSaleDetailMemo_), 0, 0, QStringLiteral("반품메모"), txtCustOrderRfndMemo_);
    // Where the room is short, these give way first.
    tdbCustSaleDetails_->setMinimumHeight(3 * formRowHeight(c1elaList_));
    txtCustOrderRfndMemo_->setMinimumHeight(formRowHeight(c1elaSaleDetailMemo_));
    letShrink({chkCmdRefund_, chkCmdDelOrderDetail_});
}

EditModeTable DetailPane::colors() const
{
    EditModeTable table;
    table.entryColors = {{txtCustOrderRfndMemo_, controls::Ground::Locked}};
    return table;
}

void DetailPane::createCustSaleDetails()
{
    auto details = std::make_unique<ado::Recordset>();
    disconnect(rowsReset_);
    rowsReset_ = connect(details.get(), &ado::Recordset::rowsReset, this, [this] { renewClone(); });
    session_.rsCustSaleDetailsClone.reset();
    list_.create(std::move(details));
}

void DetailPane::loadCustSaleDetails(qint32 lngOrdMPK)
{
    const runtime::Operation operation("load lines", {{"order", lngOrdMPK}});
    try {
        if (!session_.rsCustSaleDetails)
            createCustSaleDetails();
        list_.load(clsSQL().getOrderDetailSQL(lngOrdMPK));
    } catch (const runtime::RuntimeError &) {
        runtime::trapped();
        showRefundMemo();
        MsgBox(QStringLiteral("판매 디테일 정보를 가져오지 못했습니다."), InformationIcon,
               QStringLiteral("데이터 가져오기"), c1elaList_);
    }
}

void DetailPane::clear()
{
    list_.close();
    showRefundMemo();
}

LineKey DetailPane::currentLine() const
{
    const bool current = SaleSession::hasCurrent(session_.rsCustSaleDetails) && !session_.rsCustSaleDetails->isGone();
    return current ? LineKey(session_.rsCustSaleDetails->value(QStringLiteral("OrdD_PK"))) : LineKey();
}

void DetailPane::choose(LineKey line)
{
    if (!list_.isLoaded())
        return;
    ado::Recordset &details = *session_.rsCustSaleDetails;
    if (details.moveToKey(line.bookmark()))
        tdbCustSaleDetails_->selectRow(details.currentRow());
    else
        details.moveTo(details.rowCount());
}

void DetailPane::rebind()
{
    names_.drop();
    tdbCustSaleDetails_->Rebind();
}

void DetailPane::tellNamesInSight(ado::Foresight &next) const
{
    if (session_.rsCustSaleDetailsClone)
        ProductNames::tell(next, productsFrom(firstInSight()));
}

void DetailPane::readNamesInSight()
{
    if (session_.rsCustSaleDetailsClone)
        names_.readTogether([this] { return productsFrom(firstInSight()); });
}

int DetailPane::firstInSight() const
{
    return std::max(0, tdbCustSaleDetails_->rowAt(0));
}

/// A clone shares the rows, which a requery replaces.
void DetailPane::renewClone()
{
    names_.drop();
    session_.rsCustSaleDetailsClone.reset();
    if (list_.isLoaded())
        session_.rsCustSaleDetailsClone = session_.rsCustSaleDetails->Clone();
}

/// The products of as many lines from this one on as are likely to be in sight.
QList<qint32> DetailPane::productsFrom(int line) const
{
    constexpr int inSight = 32;
    QList<qint32> products;
    const ado::Recordset &lines = *session_.rsCustSaleDetailsClone;
    const int column = lines.columnIndex(QStringLiteral("PM_PK"));
    for (int row = line; row < std::min(lines.rowCount(), line + inSight); ++row) {
        const QVariant product = lines.valueAt(row, column);
        if (!runtime::isNull(product) && !products.contains(runtime::CLng(product)))
            products << runtime::CLng(product);
    }
    return products;
}

/// Looks at the row through the clone, so that the grid's own row stays. The cell stays empty when the product is gone; the
/// grid says where it cannot be read.
QString DetailPane::productName(const ado::Bookmark &row)
{
    if (!session_.rsCustSaleDetailsClone)
        return {};
    ado::Recordset &clone = *session_.rsCustSaleDetailsClone;
    clone.setBookmark(row);
    const qint32 product = runtime::CLng(clone[QStringLiteral("PM_PK")]);
    if (!names_.knows(product))
        names_.readTogether([&] { return productsFrom(clone.currentRow()); });
    return names_.name(product);
}

/// Another desk deleted the line that was chosen: its order has other sums by now, too.
void DetailPane::rowChanged()
{
    if (!SaleSession::hasCurrent(session_.rsCustSaleDetails) || !session_.rsCustSaleDetails->isGone()) {
        showRefundMemo();
        return;
    }
    const QPointer<DetailPane> alive(this);
    emit session_.changedElsewhere();
    if (!alive)
        return;
    MsgBox(QStringLiteral("다른 데스크에서 먼저 삭제한 판매 내역입니다. 목록을 새로 가져왔습니다."), InformationIcon,
           QStringLiteral("판매 상세 내역"), c1elaList_);
}

void DetailPane::showRefundMemo()
{
    const bool current = bool(currentLine());
    txtCustOrderRfndMemo_->setText(
        current ? runtime::text(session_.rsCustSaleDetails->value(QStringLiteral("OrdD_RfndMemo"))) : QString());
}

void DetailPane::doubleClicked()
{
    if (!SaleSession::hasCurrent(session_.rsCustSaleDetails))
        return;
    const ado::Recordset &details = *session_.rsCustSaleDetails;
    const QVariant type = details[QStringLiteral("OrdD_OrderType")];
    if (runtime::Val(details[QStringLiteral("OrdD_Count")]) > 0 && !runtime::isNull(type)
        && runtime::CLng(type) == sale::NormalSale)
        emit receiptAsked();
}

void DetailPane::askRefund()
{
    if (operations_.foundChangedAfterLoss()) {
        MsgBox(changedAfterLoss, InformationIcon, QStringLiteral("반품"), c1elaList_);
        return;
    }
    if (!SaleSession::hasCurrent(session_.rsCustSaleDetails))
        return;
    const ado::Recordset &details = *session_.rsCustSaleDetails;
    const QVariant type = details[QStringLiteral("OrdD_OrderType")];
    if (!runtime::isNull(type) && runtime::CLng(type) == sale::Loss) {
        MsgBox(QStringLiteral("망실 처리된 물품이므로 반품을 할 수 없습니다. 삭제를 하십시오."), InformationIcon,
               QStringLiteral("반품처리"), c1elaList_);
        return;
    }
    if (runtime::Val(details[QStringLiteral("OrdD_Count")]) < 1) {
        MsgBox(QStringLiteral("반품된 물품이므로 반품처리를 할 수 없습니다."), InformationIcon, QStringLiteral("반품"),
               c1elaList_);
        return;
    }
    emit refundAsked();
}

void DetailPane::deleteDetail()
{
    const LineKey line = currentLine();
    if (!line)
        return;
    const OrderKey order(session_.rsCustSaleDetails->value(QStringLiteral("OrdM_PK")));
    const QPointer<DetailPane> alive(this);
    if (MsgBox(QStringLiteral("판매 상세 내역을 삭제 하시겠습니까?"), controls::YesNo | controls::QuestionIcon,
               QStringLiteral("판매 상세 내역"), c1elaList_)
            != controls::Answer::Yes
        || !alive)
        return;
    const Outcome outcome = operations_.deleteDetail(order, line);
    if (!alive)
        return;
    rebind();
    if (outcome == Outcome::Done)
        emit session_.done(QStringLiteral("판매 내역 삭제 · 합계 ") + operations_.totalShown(order));
    if (outcome == Outcome::Conflict)
        emit session_.changedElsewhere();
    if (alive && hasFailed(outcome)) {
        MsgBox(QStringLiteral("고객 판매 디테일을 삭제하지 못했습니다."), InformationIcon,
               QStringLiteral("고객 판매 디테일 삭제"), c1elaList_);
    }
}
