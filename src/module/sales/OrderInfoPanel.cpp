#include "sales/OrderInfoPanel.h"

#include "data/Codes.h"
#include "forms/FormRow.h"
#include "forms/MemoLine.h"
#include "forms/clsMyFunctions.h"
#include "platform/controls/Appearance.h"
#include "platform/controls/DateEdit.h"
#include "platform/controls/Named.h"
#include "platform/controls/ShowText.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Format.h"

#include <QButtonGroup>
#include <QHBoxLayout>

#include <algorithm>

using controls::named;

namespace {

// Indexes of txtOrderMaster.
enum OrderField { TaxTotal, HalinTotal, Address, Cel, Tel, OrderMemo, TakbaeMemo, Misugum, TaxFreeTotal, Total };

/// Which half of the form a field stands in.
enum class Half { Left, Right, Both };

struct OrderFieldSource
{
    int index;
    const char *column;
    const char16_t *caption;
    int row; ///< in the form
    Half half;
};

// In the order of work; money first, then where the goods go.
constexpr OrderFieldSource moneyFields[] = {
    {TaxTotal, "OrdM_TaxTotal", u"과세상품 총합:", 1, Half::Left},
    {TaxFreeTotal, "OrdM_TaxFreeTotal", u"비과세상품 총합:", 2, Half::Left},
    {HalinTotal, "OrdM_HalinTotal", u"할인총금액:", 3, Half::Left},
    {Total, "OrdM_Total", u"총액:", 1, Half::Right},
    {Misugum, "OrdM_Misugum", u"미수금:", 2, Half::Right},
};
constexpr OrderFieldSource textFields[] = {
    {Address, "OrdM_Address", u"고객주소:", 4, Half::Both},
    {Cel, "OrdM_Cel", u"핸드폰:", 5, Half::Left},
    {Tel, "OrdM_Tel", u"전화번호:", 5, Half::Right},
    {TakbaeMemo, "OrdM_TakbaeMemo", u"택배메모:", 6, Half::Both},
    {OrderMemo, "OrdM_ETCMemo", u"기타메모:", 7, Half::Both},
};
constexpr int saveRow = 3;
constexpr int memoRow = 7; // takes the room that is left

} // namespace

OrderInfoPanel::OrderInfoPanel(QWidget *parent)
    : QWidget(parent)
    , dtpOrderMasterDate_(named(new controls::DateEdit(this), QStringLiteral("dtpOrderMasterDate")))
{
    makeControls();
    placeControls();
}

void OrderInfoPanel::makeControls()
{
    auto *choice = new QButtonGroup(this);
    for (const sale::Delivery code : {sale::PickUp, sale::Courier}) {
        const int index = code - sale::PickUp;
        auto *option = named(new QRadioButton(sale::deliveryText(code), this), QStringLiteral("optTakBae"), index);
        option->setAccessibleName(option->text());
        choice->addButton(option);
        optTakBae_[std::size_t(index)] = option;
    }
    optTakBae_[0]->setChecked(true);

    for (const OrderFieldSource &field : moneyFields) {
        // The other sums come from the lines.
        const bool typed = field.index == Misugum || field.index == HalinTotal;
        auto *box = new MoneyBox(typed ? MoneyHabits : TextBoxHabits(), this);
        box->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        if (!typed)
            clsMyFunctions::keepReadOnly(box);
        if (field.half == Half::Right)
            showLargeMoney(box);
        else
            box->setMinimumWidth(boxWidth(box, longMoney));
        txtOrderMaster_[std::size_t(field.index)] = named(box, QStringLiteral("txtOrderMaster"), field.index);
    }
    for (const OrderFieldSource &field : textFields) {
        constexpr TextBoxHabits habits{.onFocus = OnFocus::CaretToEnd};
        auto *box = field.index == OrderMemo ? new MemoLine(habits, this) : new MoneyBox(habits, this);
        txtOrderMaster_[std::size_t(field.index)] = named(box, QStringLiteral("txtOrderMaster"), field.index);
    }

    chkcmdCSSaveInfo_ = makeSaveButtons(QStringLiteral("chkcmdCSSaveInfo"), this);
    // A form without a window is locked all the same.
    clsMyFunctions().setCollection2Locked(colOrderMaster(), true);
    openDiscount(false);
}

void OrderInfoPanel::placeControls()
{
    QGridLayout *grid = makeFormGrid(this);
    grid->setColumnStretch(3, 1);

    auto *first = new QHBoxLayout;
    first->setSpacing(8);
    first->addWidget(optTakBae_[0]);
    first->addWidget(optTakBae_[1]);
    addFormRow(grid, 0, 0, QStringLiteral("거래일자:"), dtpOrderMasterDate_);
    grid->addLayout(first, 0, 2, 1, 2, Qt::AlignRight);

    const auto place = [&](const OrderFieldSource &field) {
        addFormRow(grid, field.row, field.half == Half::Right ? 2 : 0, QString::fromUtf16(field.caption),
                   txtOrderMaster(field.index), field.half == Half::Both ? 3 : 1);
    };
    std::ranges::for_each(moneyFields, place);
    std::ranges::for_each(textFields, place);

    auto *save = new QHBoxLayout;
    save->setSpacing(4);
    save->addStretch(1);
    save->addWidget(chkcmdCSSaveInfo_[0]);
    save->addWidget(chkcmdCSSaveInfo_[1]);
    grid->addLayout(save, saveRow, 2, 1, 2);
    grid->setRowStretch(memoRow, 1);
    txtOrderMaster(OrderMemo)->setMinimumHeight(formRowHeight(this));
}

void OrderInfoPanel::showOrder(const ado::Recordset &orders)
{
    const QVariant gubun = orders[QStringLiteral("OrdM_Gubun")];
    const bool pickUp = runtime::isNull(gubun) || runtime::CLng(gubun) == sale::PickUp;
    optTakBae_[pickUp ? 0 : 1]->setChecked(true);
    dtpOrderMasterDate_->setDate(orders[QStringLiteral("OrdM_Date")].toDate());
    for (const OrderFieldSource &field : textFields)
        controls::showText(txtOrderMaster(field.index), runtime::text(orders[QLatin1String(field.column)]));
    showTotals(orders);
}

void OrderInfoPanel::showTotals(const ado::Recordset &orders)
{
    for (const OrderFieldSource &field : moneyFields) {
        const double amount = runtime::Val(runtime::text(orders[QLatin1String(field.column)]));
        txtOrderMaster(field.index)->setText(runtime::Format(amount, runtime::strMoneyFormat));
        if (field.index == Misugum)
            showOwed(txtOrderMaster(Misugum), amount > 0);
    }
}

void OrderInfoPanel::clear()
{
    for (QLineEdit *box : txtOrderMaster_)
        box->clear();
}

OrderEdit OrderInfoPanel::edit() const
{
    OrderEdit edit;
    edit.address = txtOrderMaster(Address)->text();
    edit.cell = txtOrderMaster(Cel)->text();
    edit.telephone = txtOrderMaster(Tel)->text();
    edit.takbaeMemo = txtOrderMaster(TakbaeMemo)->text();
    edit.memo = txtOrderMaster(OrderMemo)->text();
    edit.discountTotal = txtOrderMaster(HalinTotal)->text();
    edit.outstanding = txtOrderMaster(Misugum)->text();
    edit.takbae = !optTakBae_[0]->isChecked();
    edit.date = dtpOrderMasterDate_->date();
    return edit;
}

void OrderInfoPanel::openDiscount(bool open)
{
    clsMyFunctions().setCollection2Locked({txtOrderMaster(HalinTotal)}, !open);
    if (open)
        controls::setGround(txtOrderMaster(HalinTotal), controls::Ground::Field);
}

ControlGroup OrderInfoPanel::colOrderMaster() const
{
    ControlGroup group{dtpOrderMasterDate_, optTakBae_[0], optTakBae_[1]};
    for (int index : {TakbaeMemo, Address, Cel, Tel, OrderMemo, Misugum})
        group.append(txtOrderMaster(index));
    group.append({chkcmdCSSaveInfo_[0], chkcmdCSSaveInfo_[1]});
    return group;
}

QList<EntryColor> OrderInfoPanel::entryColors() const
{
    QList<EntryColor> colors;
    for (QLineEdit *box : txtOrderMaster_)
        colors.append({box, controls::Ground::Locked});
    colors.append({dtpOrderMasterDate_, controls::Ground::Locked});
    return colors;
}

QList<EntryColor> OrderInfoPanel::editColors() const
{
    QList<EntryColor> colors;
    for (int index : {Misugum, Address, Cel, Tel, TakbaeMemo, OrderMemo})
        colors.append({txtOrderMaster(index), controls::Ground::Field});
    colors.append({dtpOrderMasterDate_, controls::Ground::Field});
    return colors;
}
