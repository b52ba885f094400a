#include "platform/controls/DateEdit.h"

#include "platform/controls/Wheel.h"

#include <QCalendarWidget>
#include <QLocale>

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
    setDate(QDate::currentDate());
    guardWheel(this);
}

} // namespace controls
