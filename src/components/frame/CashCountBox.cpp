#include "components/frame/CashCountBox.h"

#include "platform/controls/Appearance.h"
#include "platform/controls/EventEdge.h"
#include "platform/controls/Named.h"
#include "platform/registry/AppSettings.h"

#include <QGridLayout>
#include <QRegularExpressionValidator>

namespace statistics {

namespace {

const QString application = QStringLiteral("Zelvo Desk");
const QString section = QStringLiteral("물품판매관리");
const QString countKey = QStringLiteral("현금 시재");

const QString typedCount = QStringLiteral("[0-9]{0,5}");
const QString typedOpening = QStringLiteral("[0-9,]{0,12}");
constexpr int countWidth = 52; // pixels
constexpr int amountWidth = 84;

QString pieceText(std::size_t piece)
{
    return shownText(runtime::Currency::fromWon(CashCount::pieces[piece]));
}

/// What is being typed keeps its cursor.
void put(QLineEdit *field, const QString &text)
{
    if (field->text() != text)
        field->setText(text);
    field->setModified(false);
}

} // namespace

CashCountBox::CashCountBox(QWidget *parent)
    : QWidget(parent)
{
    controls::named(this, QStringLiteral("fraCashCount"));
    auto *form = new QGridLayout(this);
    form->setContentsMargins(10, 2, 10, 2);
    form->setVerticalSpacing(1);
    form->addWidget(new QLabel(QStringLiteral("현금 시재\n확인")), 0, 0, 2, 1);
    for (std::size_t piece = 0; piece < txtPieces_.size(); ++piece) {
        txtPieces_[piece] = controls::named(addField(form, pieceText(piece), typedCount, countWidth),
                                            QStringLiteral("txtPieces"), int(piece));
        txtPieces_[piece]->setAccessibleName(QStringLiteral("%1원 %2").arg(
            pieceText(piece), CashCount::isNote(piece) ? QStringLiteral("지폐 장수") : QStringLiteral("동전 개수")));
    }
    txtOpening_ = controls::named(addField(form, QStringLiteral("준비금"), typedOpening, amountWidth),
                                  QStringLiteral("txtOpening"));
    txtOpening_->setToolTip(QStringLiteral("하루를 시작할 때 서랍에 있던 현금"));
    lblCounted_ = addFigure(form, "lblCounted", QStringLiteral("시재 합계"));
    lblDifference_ = addFigure(form, "lblDifference", QStringLiteral("차액"));
    lblDifference_->setToolTip(QStringLiteral("차액 = 시재 합계 − 준비금 − 현금 증감"));
    hide();
}

QLineEdit *CashCountBox::addField(QGridLayout *form, const QString &caption, const QString &typed, int width)
{
    const int column = form->columnCount();
    auto *field = new QLineEdit;
    auto *label = new QLabel(caption);
    label->setBuddy(field);
    label->setAlignment(Qt::AlignRight);
    field->setAlignment(Qt::AlignRight);
    field->setMaximumWidth(width);
    field->setAccessibleName(caption);
    field->setValidator(new QRegularExpressionValidator(QRegularExpression(typed), field));
    form->addWidget(label, 0, column);
    form->addWidget(field, 1, column);
    controls::onEvent(field, &QLineEdit::textEdited, this, [this](const QString &) { take(); });
    controls::onEvent(field, &QLineEdit::returnPressed, this, [this] { focusNextChild(); });
    controls::onEvent(field, &QLineEdit::editingFinished, this, [this, field] {
        if (!count_ || !field->isModified()) // the last count stays when another day is only looked at
            return;
        registry::SaveSetting(application, section, countKey, count_->toText());
        fill();
    });
    return field;
}

QLabel *CashCountBox::addFigure(QGridLayout *form, const char *name, const QString &caption)
{
    const int column = form->columnCount();
    auto *label = new QLabel(caption);
    auto *figure = controls::named(new QLabel, QLatin1String(name));
    QFont bold = figure->font();
    bold.setBold(true);
    figure->setFont(bold);
    figure->setTextInteractionFlags(Qt::TextSelectableByMouse);
    for (QLabel *one : {label, figure}) {
        one->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        form->addWidget(one, one == label ? 0 : 1, column);
    }
    form->setColumnStretch(column, 1);
    return figure;
}

void CashCountBox::setDay(QDate day, const std::optional<Cell> &change)
{
    setVisible(change.has_value());
    if (!change) {
        count_.reset();
        return;
    }
    if (!count_ || count_->day != day) {
        const CashCount kept = CashCount::fromText(registry::GetSetting(application, section, countKey));
        count_ = kept.day == day ? kept : CashCount{.day = day, .opening = kept.opening};
    }
    count_->change = Sum::of(*change);
    fill();
}

void CashCountBox::fill()
{
    for (std::size_t piece = 0; piece < txtPieces_.size(); ++piece) {
        const std::optional<int> &number = count_->counts[piece];
        put(txtPieces_[piece], number ? QString::number(*number) : QString());
    }
    put(txtOpening_, shownText(count_->opening));
    tell();
}

void CashCountBox::take()
{
    if (!count_)
        return;
    for (std::size_t piece = 0; piece < txtPieces_.size(); ++piece) {
        const QString typed = txtPieces_[piece]->text().remove(u',');
        count_->counts[piece] = typed.isEmpty() ? std::nullopt : std::optional(typed.toInt());
    }
    count_->opening =
        runtime::Currency::fromPlainText(txtOpening_->text().remove(u',').toLatin1()).value_or(runtime::Currency());
    tell();
}

void CashCountBox::tell()
{
    const bool counted = count_->isCounted();
    const Cell difference = count_->difference();
    lblCounted_->setText(counted ? shownText(count_->counted()) : QString());
    lblDifference_->setText(counted ? shownText(difference) : QString());
    controls::setInk(lblDifference_,
                     inkOf(difference) == controls::Ink::Negative ? controls::Ink::Negative : controls::Ink::Plain);
    lblCounted_->setAccessibleName(QStringLiteral("시재 합계 ") + lblCounted_->text() + u'원');
    lblDifference_->setAccessibleName(QStringLiteral("차액 ") + lblDifference_->text() + u'원');
}

} // namespace statistics
