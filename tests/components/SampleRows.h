#pragma once

#include "components/frame/Reading.h"
#include "components/frame/Report.h"
#include "tests/support/TestDatabase.h"

#include <QDate>

#include <map>
#include <optional>
#include <vector>

/// The small sample clinic with some oddities added, and its rows as they lie in the tables, to be added up in the test
/// itself. Amounts in won.
namespace samplerows {

/// Filled once an engine.
TestDatabase &clinic(ado::Engine engine);
/// They are filled anew: the server was stopped, or they were written to.
void forgetClinics();

inline const QDate firstDay{2025, 7, 1};
inline const QDate lastDay{2026, 6, 30};
inline const statistics::Period wholeYear{firstDay, lastDay};

struct Line
{
    QDate date;
    int order = 0;
    int customer = 0;
    int product = 0;
    qint64 price = 0;
    qint64 discount = 0;
    qint64 count = 0;
    int kind = 0;              ///< NULL is 0
    std::optional<bool> taxed; ///< nothing when the product is gone
    qint64 net() const { return (price - discount) * count; }
};

struct LedgerRow
{
    QDate date;
    int order = 0;
    int customer = 0;
    int operation = 0; ///< NULL is 0
    qint64 money = 0;
    QString method; ///< NULL is empty
};

struct Order
{
    int key = 0;
    int customer = 0;
    QDate date;
    qint64 total = 0; ///< NULL is 0
};

std::vector<Line> lines(TestDatabase &database);
std::vector<LedgerRow> ledger(TestDatabase &database);
std::vector<Order> orders(TestDatabase &database);

/// Runs the report's statements of the view to their end.
statistics::Sheet read(statistics::Report &report, ado::Engine engine, const statistics::Period &period, int view = 0);

/// A row as "caption|1200|-50".
std::string rendered(const statistics::Row &row);
/// All rows, then the totals, a line each.
std::string rendered(const statistics::Sheet &sheet);

} // namespace samplerows
