#include "sales/SaleEntryPane.h"

#include "forms/FormRow.h"
#include "forms/KeyHint.h"
#include "forms/clsMyFunctions.h"
#include "forms/clsNumberRelated.h"
#include "platform/ado/Foresight.h"
#include "platform/controls/Appearance.h"
#include "platform/controls/EventEdge.h"
#include "platform/controls/MessageBox.h"
#include "platform/controls/Named.h"
#include "platform/controls/ShowText.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/RuntimeError.h"
#include "sales/LineKinds.h"
#include "session/modGlobalVars.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QPointer>

using controls::MsgBox;
using controls::named;
using runtime::Currency;

namespace {

// Indexes of txtSaleProductLists.
enum EntryField { Catagory, Name, UnitPrice, EtcMemo, UnitDiscount, Quantity, SalePrice, Discount, LineTotal };

struct EntryFieldLook
{
    const char16_t *caption;
    int row;
    int column;
    int span; ///< columns of the box
    TextBoxHabits habits;
    bool open;
};

constexpr TextBoxHabits plain{};
constexpr TextBoxHabits shownMoney{true, true, true, OnFocus::Nothing};

// The grid has a column for the steppers beside the quantity; other boxes of the left half take it too.
constexpr EntryFieldLook entryFields[] = {
    {u"분류 :", 0, 0, 2, plain, false},
    {u"물품명 :", 1, 0, 4, plain, false},
    {u"판매단가 :", 2, 0, 2, shownMoney, false},
    {u"메모 :", 2, 3, 1, plain, false},
    {u"단가할인:", 4, 3, 1, MoneyHabits, true},
    // The quantity is sifted like money but keeps its digits as typed.
    {u"수량:", 4, 0, 1, {true, false, false, OnFocus::SelectAll}, true},
    {u"판매단가:", 5, 0, 2, MoneyHabits, false},
    {u"할인금액:", 5, 3, 1, shownMoney, true},
    // Whoever writes it sets its colour, which is the kind's: no key released in it does.
    {u"총액:", 6, 0, 2, {true, false, true, OnFocus::Nothing}, false},
};
constexpr int checkRow = 0;
constexpr int kindRow = 3;
constexpr int quantityRow = 4;
constexpr int appendRow = 6;

const QString unitDiscountFormat = QStringLiteral("\\\\###,##0");

} // namespace

SaleEntryPane::SaleEntryPane(SaleSession &session, QWidget *parent)
    : QObject(parent)
    , session_(session)
    , operations_(session)
    , c1elaProductInfo_(named(new QWidget(parent), QStringLiteral("c1elaProductInfo")))
    , udNoOfProdPlusMinus_(new controls::Stepper(QStringLiteral("udNoOfProdPlusMinus"), -1, c1elaProductInfo_))
    , udNoOfProdPlusMinusBy5_(new controls::Stepper(QStringLiteral("udNoOfProdPlusMinusBy5"), -1, c1elaProductInfo_))
    , cmdCSAppendDetail_(named(new controls::PushCheck(QStringLiteral("추가"), c1elaProductInfo_),
                               QStringLiteral("cmdCSAppendDetail")))
{
    makeFields();
    makeKinds();
    makeSteppers();
    placeFields();
    styleAppendButton();
    resetPane();
    for (int index : {UnitDiscount, Quantity, Discount})
        controls::onEvent(txtSaleProductLists(index), &QLineEdit::textChanged, this,
                          [this](const QString &) { showLineTotal(); });
    cmdCSAppendDetail_->onPush(this, [this] { appendDetail(); });
}

void SaleEntryPane::makeFields()
{
    for (int index = 0; index < int(txtSaleProductLists_.size()); ++index) {
        const EntryFieldLook &look = entryFields[index];
        auto *box = named(new MoneyBox(look.habits, c1elaProductInfo_), QStringLiteral("txtSaleProductLists"), index);
        if (!look.open)
            clsMyFunctions::keepReadOnly(box);
        if (index == LineTotal)
            showLargeMoney(box);
        txtSaleProductLists_[std::size_t(index)] = box;
    }
    const QString checks[] = {QStringLiteral("과세"), QStringLiteral("취급")};
    for (int index = 0; index < int(chkSaleProductLists_.size()); ++index) {
        auto *check = new QCheckBox(checks[index], c1elaProductInfo_);
        check->setAccessibleName(checks[index]);
        check->setEnabled(false);
        chkSaleProductLists_[std::size_t(index)] = named(check, QStringLiteral("chkSaleProductLists"), index);
    }
}

void SaleEntryPane::makeKinds()
{
    auto *choice = new QButtonGroup(c1elaProductInfo_);
    for (int index = 0; index < int(ssoptSellType_.size()); ++index) {
        const QString &caption = lineKinds[std::size_t(index)].caption;
        auto *option = named(new QRadioButton(caption, c1elaProductInfo_), QStringLiteral("ssoptSellType"), index);
        option->setAccessibleName(caption);
        choice->addButton(option);
        ssoptSellType_[std::size_t(index)] = option;
    }
    ssoptSellType_[0]->setChecked(true);
    for (QRadioButton *option : ssoptSellType_) {
        controls::onEvent(option, &QRadioButton::toggled, this, [this](bool on) {
            if (on)
                sellTypeChanged();
        });
    }
}

void SaleEntryPane::makeSteppers()
{
    const std::pair<controls::Stepper *, int> steppers[] = {{udNoOfProdPlusMinus_, 1}, {udNoOfProdPlusMinusBy5_, 5}};
    for (const auto &[stepper, by] : steppers) {
        stepper->setAccessibleName(QStringLiteral("수량 %1씩").arg(by));
        stepper->setToolTip(stepper->accessibleName());
        controls::onEvent(stepper, &controls::Stepper::up, this, [this, by = by] { step(by); });
        controls::onEvent(stepper, &controls::Stepper::down, this, [this, by = by] { step(-by); });
    }
}

void SaleEntryPane::placeFields()
{
    QGridLayout *grid = makeFormGrid(c1elaProductInfo_);
    grid->setColumnStretch(4, 1);
    for (int index = 0; index < int(txtSaleProductLists_.size()); ++index) {
        const EntryFieldLook &look = entryFields[index];
        addFormRow(grid, look.row, look.column, QString::fromUtf16(look.caption), txtSaleProductLists(index),
                   look.span);
    }

    auto *steppers = new QHBoxLayout;
    steppers->setSpacing(2);
    steppers->addWidget(udNoOfProdPlusMinus_);
    steppers->addWidget(udNoOfProdPlusMinusBy5_);
    grid->addLayout(steppers, quantityRow, 2);

    auto *checks = new QHBoxLayout;
    checks->setSpacing(10);
    checks->addStretch(1);
    for (QCheckBox *check : chkSaleProductLists_)
        checks->addWidget(check);
    grid->addLayout(checks, checkRow, 3, 1, 2);

    auto *kinds = new QHBoxLayout;
    kinds->setSpacing(14);
    for (QRadioButton *option : ssoptSellType_)
        kinds->addWidget(option);
    kinds->addStretch(1);
    grid->addLayout(kinds, kindRow, 1, 1, 4);

    grid->addWidget(cmdCSAppendDetail_, appendRow, 3, 1, 2);
    grid->setRowStretch(appendRow + 1, 1);
    grid->setRowMinimumHeight(kindRow, formRowHeight(c1elaProductInfo_));
    const auto needs = [this](int index, const QString &text) {
        txtSaleProductLists(index)->setMinimumWidth(boxWidth(txtSaleProductLists(index), text));
    };
    needs(Quantity, QStringLiteral("-32,768"));
    needs(UnitDiscount, QStringLiteral("\\9,999,999"));
    needs(UnitPrice, longMoney);
}

/// The button that goes on must be found at a glance.
void SaleEntryPane::styleAppendButton()
{
    QFont font = cmdCSAppendDetail_->font();
    font.setBold(true);
    cmdCSAppendDetail_->setFont(font);
}

ControlGroup SaleEntryPane::colSaleEntry() const
{
    return {txtSaleProductLists(UnitDiscount), txtSaleProductLists(Quantity), udNoOfProdPlusMinus_, cmdCSAppendDetail_};
}

ControlGroup SaleEntryPane::colProductInfo() const
{
    return {txtSaleProductLists(Catagory), txtSaleProductLists(Name), txtSaleProductLists(UnitPrice),
            txtSaleProductLists(EtcMemo),  chkSaleProductLists_[0],   chkSaleProductLists_[1]};
}

EditModeTable SaleEntryPane::colors() const
{
    EditModeTable table;
    for (int index = 0; index < int(txtSaleProductLists_.size()); ++index) {
        MoneyBox *box = txtSaleProductLists(index);
        table.entryColors.append({box, entryFields[index].open ? controls::Ground::Field : controls::Ground::Locked});
    }
    return table;
}

void SaleEntryPane::focusQuantity()
{
    txtSaleProductLists(Quantity)->setFocus();
}

void SaleEntryPane::lockPrices()
{
    clsMyFunctions().setCollection2Locked({txtSaleProductLists(UnitDiscount), txtSaleProductLists(SalePrice)}, true);
}

void SaleEntryPane::setToday(OrderOperations::Clock today)
{
    operations_.setToday(std::move(today));
}

void SaleEntryPane::showProduct()
{
    if (!SaleSession::hasCurrent(session_.rsSaleProductLists)) {
        resetPane();
        return;
    }
    const ado::Recordset &products = *session_.rsSaleProductLists;
    controls::showText(txtSaleProductLists(Catagory), runtime::text(products[QStringLiteral("PM_Catagory")]));
    controls::showText(txtSaleProductLists(Name), runtime::text(products[QStringLiteral("PM_Name")]));
    // Quirk (docs/architecture.md): a product no longer handled shows its price here, but 0 after a change of kind.
    showPrices(sellType() == sale::NormalSale ? products[QStringLiteral("PM_UnitPrice")] : QVariant(0));
    controls::showText(txtSaleProductLists(EtcMemo), runtime::text(products[QStringLiteral("PM_EtcMemo")]));
    chkSaleProductLists_[0]->setChecked(runtime::isTrue(products[QStringLiteral("PM_IsTaxed")]));
    chkSaleProductLists_[1]->setChecked(runtime::isTrue(products[QStringLiteral("PM_IsValid")]));
    showLineTotal();
    const QString discount = clsNumberRelated().GetPureNumber(txtSaleProductLists(UnitDiscount)->text());
    txtSaleProductLists(UnitDiscount)->setText(runtime::Format(discount, unitDiscountFormat));
}

void SaleEntryPane::resetPane()
{
    for (int index : {Catagory, Name, UnitPrice, EtcMemo})
        txtSaleProductLists(index)->clear();
    for (QCheckBox *check : chkSaleProductLists_)
        check->setChecked(false);
    txtSaleProductLists(Quantity)->setText(QStringLiteral("1"));
    for (int index : {UnitDiscount, SalePrice, Discount, LineTotal})
        showMoney(txtSaleProductLists(index), QStringLiteral("0"));
    paintKind();
}

sale::LineType SaleEntryPane::sellType() const
{
    using enum sale::LineType;
    return ssoptSellType_[NormalSale]->isChecked() ? NormalSale : ssoptSellType_[Service]->isChecked() ? Service : Loss;
}

void SaleEntryPane::sellTypeChanged()
{
    const sale::LineType kind = sellType();
    MoneyBox *quantity = txtSaleProductLists(Quantity);
    const double typed = runtime::Val(quantity->text());
    if (kind != sale::Loss && typed < 0)
        quantity->setText(runtime::text(-typed));
    showPrices(kind == sale::NormalSale ? salePriceOfCurrentProduct() : QVariant(0));
    if (kind == sale::NormalSale)
        showLineTotal();
    else
        showMoney(txtSaleProductLists(LineTotal), QStringLiteral("0"));
    paintKind();
}

void SaleEntryPane::paintKind()
{
    if (!c1elaProductInfo_->isEnabled())
        return; // an edit greys the pane; it is painted again when that ends
    const sale::LineType kind = sellType();
    const LineKind &look = lineKinds[std::size_t(kind)];
    controls::setGround(cmdCSAppendDetail_, look.ground);
    setHint(cmdCSAppendDetail_, look.addHint);
    if (MoneyBox *discount = txtSaleProductLists(UnitDiscount); discount->isReadOnly())
        controls::setGround(discount, controls::Ground::Locked);
    MoneyBox *total = txtSaleProductLists(LineTotal);
    controls::setGround(total, kind == sale::NormalSale ? controls::Ground::Locked : look.ground);
    controls::setInk(total, total->text().startsWith(u'-') ? controls::Ink::Negative : controls::Ink::Plain);
}

QVariant SaleEntryPane::salePriceOfCurrentProduct() const
{
    if (!SaleSession::hasCurrent(session_.rsSaleProductLists))
        return 0;
    const ado::Recordset &products = *session_.rsSaleProductLists;
    return runtime::isTrue(products[QStringLiteral("PM_IsValid")]) ? products[QStringLiteral("PM_UnitPrice")]
                                                                   : QVariant(0);
}

void SaleEntryPane::showPrices(const QVariant &price)
{
    for (int index : {UnitPrice, SalePrice})
        txtSaleProductLists(index)->setText(runtime::Format(price, runtime::strMoneyFormat));
}

/// By one or five; downwards only from above that step, so the quantity never reaches 0 here.
void SaleEntryPane::step(int by)
{
    const double quantity = runtime::Val(txtSaleProductLists(Quantity)->text());
    if (by < 0 && quantity <= -by)
        return;
    txtSaleProductLists(Quantity)->setText(runtime::text(quantity + by));
}

Currency SaleEntryPane::moneyOf(int index) const
{
    return runtime::CCur(clsNumberRelated().GetPureNumber(txtSaleProductLists(index)->text()));
}

/// Quirk (docs/architecture.md): a further discount is added, and counts in this field only; nothing stores it.
void SaleEntryPane::showLineTotal()
{
    qint16 quantity = 0;
    try {
        quantity = runtime::CInt(txtSaleProductLists(Quantity)->text());
    } catch (const runtime::RuntimeError &) {
        return; // empty, a lone minus or too large while it is being typed: the total stays as it was
    }
    const Currency total = (moneyOf(SalePrice) - moneyOf(UnitDiscount)) * quantity + moneyOf(Discount);
    txtSaleProductLists(LineTotal)->setText(runtime::money(total));
    paintKind();
}

void SaleEntryPane::appendDetail()
{
    if (!SaleSession::hasCurrent(session_.rsSaleProductLists))
        return;
    const QVariant handled = session_.rsSaleProductLists->value(QStringLiteral("PM_IsValid"));
    if (!runtime::isNull(handled) && !runtime::isTrue(handled)) {
        MsgBox(QStringLiteral("취급하지 않는 물품입니다. 추가를 하실 수 없습니다."), controls::InformationIcon,
               QString(), c1elaProductInfo_);
        return;
    }
    if (operations_.foundChangedAfterLoss()) {
        MsgBox(changedAfterLoss, controls::InformationIcon, QString(), c1elaProductInfo_);
        return;
    }
    EntryLine line;
    line.intSellType = sellType();
    line.unitDiscount = txtSaleProductLists(UnitDiscount)->text();
    line.quantity = txtSaleProductLists(Quantity)->text();
    operations_.takeCurrentProduct(line);

    const QPointer<SaleEntryPane> alive(this);
    const ado::Foresight kept(gcnnMasterDB); // what comes with the commit is there when the window shows it
    const Outcome outcome = addToChosenOrder(line);
    if (alive && outcome == Outcome::Done)
        emit lineAdded();
    if (alive && outcome == Outcome::Done)
        tellAdded(line);
    if (alive && outcome == Outcome::Conflict)
        emit session_.changedElsewhere();
    if (alive && outcome == Outcome::ProductGone)
        emit session_.productGone();
    if (alive && hasFailed(outcome)) {
        const LineKind &kind = lineKinds[std::size_t(line.intSellType)];
        MsgBox(kind.failureText, controls::InformationIcon, kind.failureTitle, c1elaProductInfo_,
               outcome == Outcome::ProductGone ? productIsGone : QString());
    }
}

/// The order is read by its key: the list may stand on another one by now.
void SaleEntryPane::tellAdded(const EntryLine &line) const
{
    emit session_.done(line.name + u' ' + line.quantity.trimmed() + lineKinds[std::size_t(line.intSellType)].added
                       + QStringLiteral(" · 합계 ") + operations_.totalShown(operations_.lastOrder()));
}

/// Quirk (docs/architecture.md): once today has an order, the line goes to the selected order without a question, even
/// to an older one.
Outcome SaleEntryPane::addToChosenOrder(const EntryLine &line)
{
    const bool hasOrders = session_.rsCustSaleMaster && session_.rsCustSaleMaster->rowCount() > 0;
    if (!hasOrders)
        return operations_.addDetailToNewOrder(line);
    const QPointer<SaleEntryPane> alive(this);
    emit session_.orderTaken(); // the question speaks of the selected order
    if (!alive)
        return Outcome::Stopped;
    const ShownOrder order = operations_.currentOrder();
    const qint16 orders = operations_.countTodayOrders();
    if (orders < 0)
        return Outcome::Failed;
    const controls::Answer answer = orders > 0 ? controls::Answer::No : askForToday(line);
    if (answer == controls::Answer::Cancel || !alive)
        return Outcome::Stopped;
    if (answer == controls::Answer::Yes)
        return operations_.addDetailToNewOrder(line);
    if (order)
        return operations_.addDetailToSelectedOrder(order, line);
    MsgBox(QStringLiteral("선택된 거래가 없습니다. 물품을 추가할 거래를 먼저 선택하십시오."), controls::InformationIcon,
           QStringLiteral("거래 선택"), c1elaProductInfo_);
    return Outcome::Stopped;
}

/// Yes: on an order of today. No: on the selected one.
controls::Answer SaleEntryPane::askForToday(const EntryLine &line) const
{
    const LineKind &kind = lineKinds[std::size_t(line.intSellType)];
    const QString question = QStringLiteral("오늘 날짜의 거래내역이 없습니다. 오늘 날짜로 거래 하시겠습니까?")
                             + QStringLiteral("\n\n") + kind.choices;
    return MsgBox(question, controls::YesNoCancel | controls::InformationIcon, kind.questionTitle, c1elaProductInfo_);
}
