#pragma once

#include <QDate>
#include <QString>

#include <vector>

namespace statistics {

/// Days from the first to the last, both included.
struct Period
{
    QDate first;
    QDate last;

    bool isValid() const { return first.isValid() && last.isValid() && first <= last; }
    int days() const { return int(first.daysTo(last)) + 1; }
    /// "2026-11-24 ~ 2026-11-30", a single day alone.
    QString text() const;

    friend bool operator==(const Period &, const Period &) = default;
};

Period dayOf(QDate day);
/// Monday to Sunday.
Period weekOf(QDate day);
Period monthOf(QDate day);
Period yearOf(QDate day);
/// The same days of the year before; the end of a month stays one.
Period yearBefore(const Period &period);
/// The months of the period, cut to it. Where there are more than `most`, the first stands for all that lie earlier.
std::vector<Period> monthsOf(const Period &period, std::size_t most);

/// How days are put together into the rows of a report.
enum class Grain { Day, Week, Month };

/// The row that a day belongs to, cut to the period; rows sort by their first day.
Period rowOf(QDate day, Grain grain, const Period &within);
/// "2026-11-24 (화)", "2026-11-23 ~ 11-29" or "2026-11".
QString rowCaption(const Period &row, Grain grain);
/// The same for the foot of a bar: "11-24", "11-23" or "2026-11".
QString barCaption(const Period &row, Grain grain);
/// Which row of the calendar that is: of two that follow one another, the second is one more.
int calendarPlace(const Period &row, Grain grain);

} // namespace statistics
