#include "entry/CustomerPane.h"

#include "platform/controls/LargeFigure.h"
#include "platform/controls/Named.h"
#include "platform/controls/ShowText.h"
#include "platform/controls/Spoken.h"
#include "platform/runtime/Format.h"

#include <QGridLayout>
#include <QLabel>

namespace {

struct CustomerField
{
    const char16_t *caption;
    int row;
    int column;
    int span; ///< columns of the box
};

// Two rows; the address takes what the short fields leave.
constexpr CustomerField customerFields[] = {
    {u"고객성함 :", 0, 0, 1}, {u"챠트번호 :", 0, 2, 1}, {u"생일 :", 0, 4, 1},
    {u"성별 :", 0, 6, 1},     {u"우편번호 :", 1, 0, 1}, {u"주소 :", 1, 2, 3},
    {u"전화번호 :", 1, 6, 1}, {u"핸드폰 :", 1, 8, 1},   {u"VIP :", 0, 8, 1},
};

constexpr int columnStretch[] = {0, 3, 0, 3, 0, 3, 0, 3, 0, 3};

/// Whose window it is must be seen from a step away.
constexpr double largeText = 1.4;
constexpr std::size_t largeFields = 2; // name and chart number

} // namespace

CustomerPane::CustomerPane(QWidget *parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("c1elaCustDetail"));
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(6, 4, 6, 4);
    grid->setVerticalSpacing(3);
    for (int column = 0; column < int(std::size(columnStretch)); ++column)
        grid->setColumnStretch(column, columnStretch[column]);

    for (std::size_t index = 0; index < txtCustDetail_.size(); ++index) {
        const CustomerField &field = customerFields[index];
        auto *box = controls::named(new QLineEdit(this), QStringLiteral("txtCustDetail"), int(index));
        auto *label = new QLabel(QString::fromUtf16(field.caption), this);
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        label->setBuddy(box);
        box->setAccessibleName(controls::spokenName(label->text()));
        if (index < largeFields)
            controls::showLarge(box, largeText);
        grid->addWidget(label, field.row, field.column);
        grid->addWidget(box, field.row, field.column + 1, 1, field.span);
        txtCustDetail_[index] = box;
    }
}

QSize CustomerPane::minimumSizeHint() const
{
    const QMargins margins = layout()->contentsMargins();
    return {QWidget::minimumSizeHint().width(), txtCustDetail_[0]->minimumHeight() + margins.top() + margins.bottom()};
}

void CustomerPane::fold(bool folded)
{
    auto *grid = static_cast<QGridLayout *>(layout());
    for (int column = 0; column < grid->columnCount(); ++column) {
        const QLayoutItem *item = grid->itemAtPosition(1, column);
        if (item && item->widget()->isHidden() != folded) // each one that is told so lays out the whole window
            item->widget()->setVisible(!folded);
    }
}

void CustomerPane::show(const Customer &customer)
{
    const QString values[] = {
        customer.name,
        customer.chartNumber,
        runtime::Format(customer.birth, QStringLiteral("YYYY-MM-DD")),
        customer.male ? QStringLiteral("남") : QStringLiteral("여"),
        customer.zipCode,
        customer.address,
        customer.phone,
        customer.cell,
        customer.vip,
    };
    for (std::size_t index = 0; index < txtCustDetail_.size(); ++index)
        controls::showText(txtCustDetail_[index], values[index]);
}

ControlGroup CustomerPane::colCustDetail() const
{
    return ControlGroup(txtCustDetail_.begin(), txtCustDetail_.end());
}
