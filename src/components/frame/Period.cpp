#include "components/frame/Period.h"

#include "platform/runtime/Format.h"

#include <QLocale>

#include <algorithm>

namespace statistics {

QString Period::text() const
{
    return first == last ? runtime::dateText(first)
                         : QStringLiteral("%1 ~ %2").arg(runtime::dateText(first), runtime::dateText(last));
}

Period dayOf(QDate day)
{
    return {day, day};
}

Period weekOf(QDate day)
{
    const QDate monday = day.addDays(1 - day.dayOfWeek());
    return {monday, monday.addDays(6)};
}

Period monthOf(QDate day)
{
    return {QDate(day.year(), day.month(), 1), QDate(day.year(), day.month(), day.daysInMonth())};
}

Period yearOf(QDate day)
{
    return {QDate(day.year(), 1, 1), QDate(day.year(), 12, 31)};
}

Period yearBefore(const Period &period)
{
    const bool endsItsMonth = period.last == monthOf(period.last).last;
    const QDate last = period.last.addYears(-1);
    return {period.first.addYears(-1), endsItsMonth ? monthOf(last).last : last};
}

std::vector<Period> monthsOf(const Period &period, std::size_t most)
{
    std::vector<Period> months;
    for (QDate day = period.first; day <= period.last; day = months.back().last.addDays(1))
        months.push_back(rowOf(day, Grain::Month, period));
    if (months.size() > most) {
        const auto kept = months.end() - std::ptrdiff_t(most);
        kept->first = period.first;
        months.erase(months.begin(), kept);
    }
    return months;
}

Period rowOf(QDate day, Grain grain, const Period &within)
{
    const Period whole = grain == Grain::Day ? dayOf(day) : grain == Grain::Week ? weekOf(day) : monthOf(day);
    return {std::max(whole.first, within.first), std::min(whole.last, within.last)};
}

QString rowCaption(const Period &row, Grain grain)
{
    switch (grain) {
    case Grain::Day:
        return QStringLiteral("%1 (%2)").arg(
            runtime::dateText(row.first),
            QLocale(QLocale::Korean, QLocale::SouthKorea).dayName(row.first.dayOfWeek(), QLocale::ShortFormat));
    case Grain::Week:
        return QStringLiteral("%1 ~ %2").arg(runtime::dateText(row.first), row.last.toString(QStringLiteral("MM-dd")));
    case Grain::Month:
        return row.first.toString(QStringLiteral("yyyy-MM"));
    }
    Q_UNREACHABLE();
}

QString barCaption(const Period &row, Grain grain)
{
    return row.first.toString(grain == Grain::Month ? QStringLiteral("yyyy-MM") : QStringLiteral("MM-dd"));
}

int calendarPlace(const Period &row, Grain grain)
{
    switch (grain) {
    case Grain::Day:
        return int(row.first.toJulianDay());
    case Grain::Week:
        return int(weekOf(row.first).first.toJulianDay() / 7);
    case Grain::Month:
        return row.first.year() * 12 + row.first.month();
    }
    Q_UNREACHABLE();
}

} // namespace statistics
