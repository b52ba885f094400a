#pragma once

#include "platform/controls/Palette.h"
#include "platform/runtime/Currency.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <variant>
#include <vector>

namespace statistics {

/// What a report has to say: lines at the top, a table with its totals, a chart.

/// Nothing, a text, or an exact number (won, pieces, days).
using Cell = std::variant<std::monostate, QString, runtime::Currency>;

/// Stands for a number that cannot be told.
inline const QString unknownSign = QStringLiteral("?");

struct Column
{
    enum class Kind {
        Text,
        Number, ///< pieces, days: grouped, right-aligned
        Money,  ///< won, shown as a number
    };

    QString caption;
    Kind kind = Kind::Money;
    int width = 90; ///< pixels at 96 dpi
};

using Row = std::vector<Cell>;

struct SummaryLine
{
    QString group;
    QString caption;
    Cell amount;
    bool isResult = false; ///< the figure that the group is read for
    QString unit = {};     ///< empty for won
};

struct Chart
{
    struct Series
    {
        QString caption;
        std::vector<runtime::Currency> values; ///< one a category
    };

    QString title;
    QStringList categories;
    /// Of each category on the calendar, counted in its days, weeks or months: a line breaks where one is passed over.
    /// Empty: one beside the other.
    std::vector<int> places = {};
    std::vector<Series> series;
    bool lying = false;         ///< horizontal bars, the first category on top
    bool beside = false;        ///< the series side by side, to be compared; otherwise one on the other
    bool inTenThousands = true; ///< won, shown in units of 10,000; otherwise pieces
};

struct Sheet
{
    std::vector<SummaryLine> summary;
    std::vector<Column> columns;
    std::vector<Row> rows;
    Row totals;
    Chart chart;
    QString remark; ///< one line on how to read the table
    /// On as few upright pages as can be read, the chart only where it fits beside the rows.
    bool isDense = false;
    /// Cash taken less cash given back, where the drawer is counted against it.
    std::optional<Cell> cashChange = {};
};

/// As it stands in the table: numbers grouped, with as many decimals as they have.
QString shownText(const Cell &cell);
/// As it stands in a file: numbers without grouping.
QString plainText(const Cell &cell);
/// The longest text among the rows of a column, by its letters.
QString longestText(const std::vector<Row> &rows, std::size_t column);
/// Lowest first; what is nothing before all else.
bool isBefore(const Cell &a, const Cell &b);
bool isNumber(const Cell &cell);
/// Red below zero, which the minus sign tells too; zeros step back so that the eye finds what is there.
controls::Ink inkOf(const Cell &cell);
/// Whether a number of the sheet cannot be told.
bool holdsUnknown(const Sheet &sheet);

} // namespace statistics
