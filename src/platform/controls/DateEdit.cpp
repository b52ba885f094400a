#include "platform/controls/DateEdit.h"

#include "platform/controls/Appearance.h"
#include "platform/controls/Wheel.h"

#include <QCalendarWidget>
#include <QFocusEvent>
#include <QLocale>
#include <QTextCharFormat>

#include <utility>

namespace controls {

DateEdit::DateEdit(QWidget *parent)
    : QDateEdit(parent)
{
    setLocale(QLocale(QLocale::Korean, QLocale::SouthKorea));
    setDisplayFormat(QStringLiteral("yyyy-MM-dd"));
    setCalendarPopup(true);
    calendarWidget()->setLocale(locale());
    calendarWidget()->setFirstDayOfWeek(Qt::Sunday);
    calendarWidget()->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    followColors(this, [this] {
        QTextCharFormat restDay;
        restDay.setForeground(ink(Ink::Negative));
        for (const Qt::DayOfWeek day : {Qt::Saturday, Qt::Sunday})
            calendarWidget()->setWeekdayTextFormat(day, restDay);
    });
    setDate(QDate::currentDate());
    guardWheel(this);
    setCurrentSection(DaySection);
}

void DateEdit::focusInEvent(QFocusEvent *event)
{
    QDateEdit::focusInEvent(event);
    const bool hadFocus = std::exchange(hadFocus_, true);
    const bool comesBack = hadFocus && event->reason() == Qt::ActiveWindowFocusReason;
    // A click chooses its own section; a calendar or another window in front leaves it as it was.
    if (event->reason() != Qt::MouseFocusReason && event->reason() != Qt::PopupFocusReason && !comesBack)
        setSelectedSection(DaySection);
}

} // namespace controls
