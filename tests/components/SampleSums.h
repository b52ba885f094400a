#pragma once

#include "tests/components/SampleRows.h"

#include <algorithm>
#include <numeric>

/// On every engine, what a report shows.
class Figures : public testing::TestWithParam<ado::Engine>
{
protected:
    TestDatabase &database_ = samplerows::clinic(GetParam());

    statistics::Sheet sheet(statistics::Report &report, const statistics::Period &period, int view = 0)
    {
        return samplerows::read(report, GetParam(), period, view);
    }
};

/// The rows of the tables, added up by hand.
namespace samplerows {

/// Sums of the columns behind the first, by day or by customer.
template <typename Key>
using Groups = std::map<Key, std::vector<qint64>>;
using Days = Groups<QDate>;

inline std::string rowText(const std::string &caption, const std::vector<qint64> &amounts)
{
    return std::accumulate(amounts.begin(), amounts.end(), caption,
                           [](const std::string &text, qint64 amount) { return text + '|' + std::to_string(amount); });
}

inline void add(std::vector<qint64> &sums, const std::vector<qint64> &amounts)
{
    sums.resize(amounts.size());
    std::transform(sums.begin(), sums.end(), amounts.begin(), sums.begin(), std::plus<>());
}

/// "2026-03-14|1|2" for each day, then all days together.
inline std::string rendered(const Days &days, std::size_t columns)
{
    std::vector<qint64> totals(columns, 0);
    std::string all;
    for (const auto &[day, amounts] : days) {
        all += rowText(statistics::rowCaption(statistics::dayOf(day), statistics::Grain::Day).toStdString(), amounts)
               + '\n';
        add(totals, amounts);
    }
    return all + rowText("합계", totals);
}

inline bool endsWith(const QString &method, char sign)
{
    return !method.isEmpty() && method.back() == QLatin1Char(sign);
}

/// 0 cash, 1 card, 2 bank.
inline std::size_t medium(const QString &method)
{
    return endsWith(method, '1') ? 1 : endsWith(method, '2') ? 2 : 0;
}

/// Orders by key and customer, as the ledger names them.
inline std::map<std::pair<int, int>, Order> ordersOf(TestDatabase &database)
{
    std::map<std::pair<int, int>, Order> all;
    for (const Order &order : orders(database))
        all[{order.key, order.customer}] = order;
    return all;
}

/// Whether a payment is money received later: after its order's day, or coded so.
inline bool isLate(const LedgerRow &row, const std::map<std::pair<int, int>, Order> &orders)
{
    const auto order = orders.find({row.order, row.customer});
    return row.operation == 3
           && (row.method.startsWith(QLatin1Char('1')) || (order != orders.end() && row.date > order->second.date));
}

inline const auto byDay = [](const auto &row) { return row.date; };
inline const auto byCustomer = [](const auto &row) { return row.customer; };

template <typename KeyOf>
auto salesBy(KeyOf keyOf, TestDatabase &database)
{
    enum { Orders, Gross, Discount, Returns, Returned, Net, Taxed, TaxFree, Unknown, Columns };
    Groups<decltype(keyOf(Order()))> groups;
    for (const Order &order : orders(database)) {
        groups[keyOf(order)].resize(Columns);
        ++groups[keyOf(order)][Orders];
    }
    for (const Line &line : lines(database)) {
        std::vector<qint64> &sums = groups[keyOf(line)];
        if (line.count > 0) {
            sums[Gross] += line.price * line.count;
            sums[Discount] += line.discount * line.count;
        } else if (line.count < 0) {
            ++sums[Returns];
            sums[Returned] += line.net();
        }
        sums[Net] += line.net();
        sums[!line.taxed ? Unknown : *line.taxed ? Taxed : TaxFree] += line.net();
    }
    return groups;
}

template <typename KeyOf>
auto moneyBy(KeyOf keyOf, TestDatabase &database)
{
    enum { Taken = 6, Refunded, Net, Discounts, Cuts, Columns };
    Groups<decltype(keyOf(LedgerRow()))> groups;
    const auto ordersByKey = ordersOf(database);
    for (const LedgerRow &row : ledger(database)) {
        if (row.operation < 1 || row.operation > 4)
            continue;
        std::vector<qint64> &sums = groups[keyOf(row)];
        sums.resize(Columns);
        if (row.operation == 1)
            sums[Cuts] += row.money;
        if (row.operation == 2)
            sums[Discounts] += row.money;
        if (row.operation == 3) {
            sums[medium(row.method) + (isLate(row, ordersByKey) ? 3 : 0)] += row.money;
            sums[Taken] += row.money;
            sums[Net] += row.money;
        }
        if (row.operation == 4) {
            sums[Refunded] -= row.money;
            sums[Net] -= row.money;
        }
    }
    return groups;
}

} // namespace samplerows
