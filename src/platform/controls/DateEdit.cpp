#include "platform/controls/DateEdit.h"

#include "platform/controls/Appearance.h"
#include "platform/controls/Wheel.h"

#include <QCalendarWidget>
#include <QLocale>
#include <QTextCharFormat>

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
}

} // namespace controls
