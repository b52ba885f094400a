#include "components/frame/PeriodBar.h"

#include "platform/controls/Named.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>

#include <algorithm>
#include <iterator>

namespace statistics {

namespace {

constexpr int restAfterTyping = 600; // ms
constexpr int buttonPadding = 24;    // pixels; the stock width would push the tree of reports aside

struct PresetButton
{
    const char *name;
    const char16_t *caption;
    Period (*period)(QDate today);
};

Period yesterdayOf(QDate today)
{
    return dayOf(today.addDays(-1));
}

constexpr PresetButton periodButtons[] = {{"cmdToday", u"오늘", dayOf},
                                          {"cmdThisWeek", u"이번 주", weekOf},
                                          {"cmdThisMonth", u"이번 달", monthOf},
                                          {"cmdThisYear", u"올해", yearOf}};
constexpr PresetButton dayButtons[] = {{"cmdToday", u"오늘", dayOf}, {"cmdYesterday", u"어제", yesterdayOf}};

controls::DateEdit *dateBox(QLayout *layout, const char *name, const QString &caption)
{
    auto *box = controls::named(new controls::DateEdit, QLatin1String(name));
    auto *label = new QLabel(caption);
    label->setBuddy(box);
    box->setAccessibleName(caption);
    layout->addWidget(label);
    layout->addWidget(box);
    return box;
}

} // namespace

PeriodBar::PeriodBar(Report::Asks asks, QWidget *parent)
    : QWidget(parent)
    , asks_(asks)
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    const bool oneDay = asks != Report::Asks::Period;
    dtpFirst_ = dateBox(layout, "dtpFirst",
                        asks == Report::Asks::Period ? QStringLiteral("기간:")
                        : asks == Report::Asks::Day  ? QStringLiteral("날짜:")
                                                     : QStringLiteral("출고 기준일:"));
    dtpLast_ = oneDay ? nullptr : dateBox(layout, "dtpLast", QStringLiteral("~"));
    if (dtpLast_) {
        dtpFirst_->setAccessibleName(QStringLiteral("시작일"));
        dtpLast_->setAccessibleName(QStringLiteral("종료일"));
    }
    addButtons(layout);

    typed_.setSingleShot(true);
    typed_.setInterval(restAfterTyping);
    connect(&typed_, &QTimer::timeout, this, &PeriodBar::chosen);
    for (controls::DateEdit *box : {dtpFirst_, dtpLast_}) {
        if (box)
            connect(box, &QDateEdit::dateChanged, &typed_, qOverload<>(&QTimer::start));
    }
}

void PeriodBar::addButtons(QBoxLayout *layout)
{
    const auto add = [&](const PresetButton &preset) {
        auto *button = controls::named(new QPushButton(QString::fromUtf16(preset.caption)), QLatin1String(preset.name));
        button->setAutoDefault(false);
        button->setFixedWidth(button->fontMetrics().horizontalAdvance(button->text()) + buttonPadding);
        connect(button, &QPushButton::clicked, this, [this, preset] { choose(preset.period(QDate::currentDate())); });
        layout->addWidget(button);
    };
    if (asks_ == Report::Asks::Period)
        std::for_each(std::begin(periodButtons), std::end(periodButtons), add);
    else
        std::for_each(std::begin(dayButtons), std::end(dayButtons) - (asks_ == Report::Asks::LastDay ? 1 : 0), add);
}

Period PeriodBar::period() const
{
    if (asks_ == Report::Asks::LastDay)
        return {dtpFirst_->date().addDays(1 - Report::rateDays), dtpFirst_->date()};
    return {dtpFirst_->date(), (dtpLast_ ? dtpLast_ : dtpFirst_)->date()};
}

void PeriodBar::show(const Period &period)
{
    const QSignalBlocker first(dtpFirst_);
    dtpFirst_->setDate(dtpLast_ ? period.first : period.last);
    if (dtpLast_) {
        const QSignalBlocker last(dtpLast_);
        dtpLast_->setDate(period.last);
    }
    typed_.stop();
}

void PeriodBar::choose(const Period &period)
{
    show(period);
    emit chosen();
}

} // namespace statistics
