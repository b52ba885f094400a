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
    setDate(QDate::currentDate());
    guardWheel(this);
    setCurrentSection(DaySection);
}

/// A calendar is a window full of controls, and few of a window's pickers are ever opened: it is made when it may drop down.
void DateEdit::dressCalendar()
{
    if (!calendarPopup() || std::exchange(calendarIsDressed_, true))
        return;
    calendarWidget()->setLocale(locale());
    calendarWidget()->setFirstDayOfWeek(Qt::Sunday);
    calendarWidget()->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    followColors(this, [this] {
        QTextCharFormat restDay;
        restDay.setForeground(ink(Ink::Negative));
        for (const Qt::DayOfWeek day : {Qt::Saturday, Qt::Sunday})
            calendarWidget()->setWeekdayTextFormat(day, restDay);
    });
}

void DateEdit::mousePressEvent(QMouseEvent *event)
{
    dressCalendar();
    QDateEdit::mousePressEvent(event);
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
