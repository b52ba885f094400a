#include "data/clsSQL.h"
#include "plugins/VantoOneDay/OneDayReport.h"
#include "plugins/VantoPayPeriod/PayPeriodReport.h"
#include "plugins/VantoSalesItem/SalesItemReport.h"
#include "plugins/VantoSalesPeriod/SalesPeriodReport.h"
#include "plugins/VantoStock/StockReport.h"
#include "tests/plugins/SampleRows.h"

#include <algorithm>
#include <numeric>

using namespace samplerows;
using statistics::Period;

namespace {

class Figures : public testing::TestWithParam<ado::Engine>
{
protected:
    TestDatabase &database_ = clinic(GetParam());

    statistics::Sheet sheet(statistics::Report &report, const Period &period, int view = 0)
    {
        return read(report, GetParam(), period, view);
    }
};

/// Sums by day of the columns behind the first, as "2026-03-14|1|2", then all days together.
using Days = std::map<QDate, std::vector<qint64>>;

std::string rendered(const Days &days, std::size_t columns)
{
    std::vector<qint64> totals(columns, 0);
    std::string all;
    const auto line = [](const std::string &caption, const std::vector<qint64> &amounts) {
        return std::accumulate(amounts.begin(), amounts.end(), caption,
                               [](const std::string &text, qint64 amount) { return text + '|' + std::to_string(amount); });
    };
    for (const auto &[day, amounts] : days) {
        all += line(statistics::rowCaption(statistics::dayOf(day), statistics::Grain::Day).toStdString(), amounts) + '\n';
        std::transform(totals.begin(), totals.end(), amounts.begin(), totals.begin(), std::plus<>());
    }
    return all + line("합계", totals);
}

bool endsWith(const QString &method, char sign)
{
    return !method.isEmpty() && method.back() == QLatin1Char(sign);
}

/// 0 cash, 1 card, 2 bank.
std::size_t medium(const QString &method)
{
    return endsWith(method, '1') ? 1 : endsWith(method, '2') ? 2 : 0;
}

Days salesByDay(TestDatabase &database)
{
    enum { Orders, Gross, Discount, Returns, Returned, Net, Taxed, TaxFree, Unknown, Columns };
    Days days;
    const auto sums = [&days](QDate day) -> std::vector<qint64> & {
        days[day].resize(Columns);
        return days[day];
    };
    for (const Order &order : orders(database))
        ++sums(order.date)[Orders];
    for (const Line &line : lines(database)) {
        std::vector<qint64> &day = sums(line.date);
        if (line.count > 0) {
            day[Gross] += line.price * line.count;
            day[Discount] += line.discount * line.count;
        } else if (line.count < 0) {
            ++day[Returns];
            day[Returned] += line.net();
        }
        day[Net] += line.net();
        day[!line.taxed ? Unknown : *line.taxed ? Taxed : TaxFree] += line.net();
    }
    return days;
}

Days moneyByDay(TestDatabase &database)
{
    enum { Taken = 6, Refunded, Net, Discounts, Cuts, Columns };
    Days days;
    for (const LedgerRow &row : ledger(database)) {
        if (row.operation < 1 || row.operation > 4)
            continue;
        std::vector<qint64> &day = days[row.date];
        day.resize(Columns);
        if (row.operation == 1)
            day[Cuts] += row.money;
        if (row.operation == 2)
            day[Discounts] += row.money;
        if (row.operation == 3) {
            day[medium(row.method) + (row.method.startsWith(QLatin1Char('1')) ? 3 : 0)] += row.money;
            day[Taken] += row.money;
            day[Net] += row.money;
        }
        if (row.operation == 4) {
            day[Refunded] -= row.money;
            day[Net] -= row.money;
        }
    }
    return days;
}

} // namespace

TEST_P(Figures, SalesOfEveryDayAreThoseOfItsLines)
{
    statistics::SalesPeriodReport report;
    EXPECT_EQ(rendered(sheet(report, wholeYear)), rendered(salesByDay(database_), statistics::SalesPeriodReport::Amounts));
}

TEST_P(Figures, MoneyOfEveryDayIsThatOfTheLedger)
{
    statistics::PayPeriodReport report;
    EXPECT_EQ(rendered(sheet(report, wholeYear)), rendered(moneyByDay(database_), statistics::PayPeriodReport::Amounts));
}

TEST_P(Figures, OfAPeriodAreTheSumsOfItsDaysWeeksAndMonths)
{
    const Period period{QDate(2026, 2, 11), QDate(2026, 4, 9)}; // begins and ends within a week and a month
    statistics::SalesPeriodReport sales;
    statistics::PayPeriodReport money;
    for (statistics::Report *report : {static_cast<statistics::Report *>(&sales), static_cast<statistics::Report *>(&money)}) {
        std::vector<runtime::Currency> days;
        for (QDate day = period.first; day <= period.last; day = day.addDays(1)) {
            const statistics::Row totals = sheet(*report, statistics::dayOf(day)).totals;
            days.resize(std::max(days.size(), totals.size() - 1));
            for (std::size_t column = 1; column < totals.size(); ++column)
                days[column - 1] += std::get<runtime::Currency>(totals[column]);
        }
        for (int view = 0; view < 3; ++view) {
            const statistics::Sheet whole = sheet(*report, period, view);
            EXPECT_EQ(rendered(whole.totals), rendered(statistics::rowOfAmounts(QStringLiteral("합계"), days))) << view;
            std::vector<runtime::Currency> rows(days.size());
            for (const statistics::Row &row : whole.rows) {
                for (std::size_t column = 1; column < row.size(); ++column)
                    rows[column - 1] += std::get<runtime::Currency>(row[column]);
            }
            EXPECT_EQ(rows, days) << view;
            if (view > 0) {
                EXPECT_EQ(whole.rows.size(), view == 1 ? 9u : 3u);
            }
        }
    }
}

TEST_P(Figures, SalesOfAProductAreThoseOfItsLines)
{
    const Period period{QDate(2026, 3, 1), QDate(2026, 6, 30)};
    enum { Sold, Service, Lost, Returned, Net, Columns };
    std::map<int, std::vector<qint64>> products;
    for (const Line &line : lines(database_)) {
        if (line.date < period.first || line.date > period.last)
            continue;
        std::vector<qint64> &sums = products[line.product];
        sums.resize(Columns);
        if (line.kind == 0)
            sums[line.count < 0 ? Returned : Sold] += line.count;
        if (line.kind == 1 || line.kind == 2)
            sums[line.kind == 1 ? Service : Lost] += line.count;
        sums[Net] += line.net();
    }
    std::vector<std::string> expected;
    std::map<std::string, std::vector<qint64>> groups;
    for (const auto &[key, sums] : products) {
        const QString names = database_.value(
            QStringLiteral("SELECT PM_Catagory, PM_Name FROM tPSProductMaster WHERE PM_PK = %1").arg(key));
        std::string row = names.isEmpty() ? "|(삭제된 물품 " + std::to_string(key) + ")" : names.toStdString();
        std::vector<qint64> &group = groups[names.isEmpty() ? "(분류 없음)" : names.section(u'|', 0, 0).toStdString()];
        group.resize(Columns);
        for (std::size_t column = 0; column < Columns; ++column) {
            row += '|' + std::to_string(sums[column]);
            group[column] += sums[column];
        }
        expected.push_back(row);
    }
    std::vector<std::string> expectedGroups;
    for (const auto &[category, sums] : groups)
        expectedGroups.push_back(std::accumulate(sums.begin(), sums.end(), category, [](const std::string &text, qint64 amount) {
            return text + '|' + std::to_string(amount);
        }));

    statistics::SalesItemReport report;
    for (int view = 0; view < 2; ++view) {
        const statistics::Sheet shown = sheet(report, period, view);
        std::vector<std::string> rows;
        for (const statistics::Row &row : shown.rows)
            rows.push_back(rendered(row));
        std::vector<std::string> wanted = view == 0 ? expected : expectedGroups;
        std::sort(rows.begin(), rows.end());
        std::sort(wanted.begin(), wanted.end());
        EXPECT_EQ(rows, wanted);
        EXPECT_TRUE(std::is_sorted(shown.rows.rbegin(), shown.rows.rend(), [](const auto &a, const auto &b) {
            return statistics::isBefore(a.back(), b.back());
        }));
        EXPECT_EQ(shown.chart.categories.size(), std::min<qsizetype>(10, qsizetype(shown.rows.size())));
    }
}

TEST_P(Figures, OfOneDayFillTheSheetOfTheEveningCount)
{
    const std::vector<Line> allLines = lines(database_);
    const std::vector<LedgerRow> allMoney = ledger(database_);
    const std::vector<Order> allOrders = orders(database_);
    statistics::OneDayReport report;
    for (QDate day = QDate(2026, 3, 2); day < QDate(2026, 3, 20); day = day.addDays(1)) {
        std::map<std::string, qint64> sums;
        std::map<int, Order> ofTheDay;
        for (const Order &order : allOrders) {
            if (order.date != day)
                continue;
            ofTheDay[order.key] = order;
            ++sums["매출/거래"];
            sums["미수·감면/미수 발생"] += order.owed;
        }
        for (const Line &line : allLines) {
            if (!ofTheDay.contains(line.order))
                continue;
            sums["매출/판매금액"] += line.count > 0 ? line.price * line.count : 0;
            sums["매출/할인"] += line.count > 0 ? line.discount * line.count : 0;
            sums["매출/반품"] += line.count < 0 ? line.net() : 0;
            sums["매출/순매출"] += line.net();
        }
        for (const LedgerRow &row : allMoney) {
            const bool late = row.operation == 3 && row.method.startsWith(QLatin1Char('1'));
            if (late && ofTheDay.contains(row.order) && ofTheDay[row.order].customer == row.customer)
                sums["미수·감면/미수 발생"] += row.money;
            if (row.date != day || row.operation == 0)
                continue;
            const bool cash = medium(row.method) == 0;
            if (row.operation == 3) {
                sums[std::string("수납/") + (cash ? "현금" : medium(row.method) == 1 ? "카드" : "통장")] += row.money;
                sums["수납/순수납"] += row.money;
                sums["미수·감면/미수 수납"] += late ? row.money : 0;
                sums["현금 시재/현금 수납"] += cash ? row.money : 0;
                sums["현금 시재/서랍에 늘어야 할 현금"] += cash ? row.money : 0;
            } else if (row.operation == 4) {
                sums["수납/환불"] -= row.money;
                sums["수납/순수납"] -= row.money;
                sums["현금 시재/현금 환불"] -= cash ? row.money : 0;
                sums["현금 시재/서랍에 늘어야 할 현금"] -= cash ? row.money : 0;
            } else {
                sums[row.operation == 2 ? "미수·감면/수납 시 할인" : "미수·감면/절사"] += row.money;
            }
        }
        const statistics::Sheet shown = sheet(report, statistics::dayOf(day));
        ASSERT_EQ(shown.summary.size(), 17u);
        for (const statistics::SummaryLine &line : shown.summary)
            EXPECT_EQ(line.amount.toText().toStdString(), std::to_string(sums[(line.group + u'/' + line.caption).toStdString()]))
                << day.toString(Qt::ISODate).toStdString() << ' ' << line.caption.toStdString();
    }
}

TEST_P(Figures, OfOneDayNameThePatientOfEveryOrderAndOfMoneyForOlderOnes)
{
    statistics::OneDayReport report;
    const auto row = [&](QDate day, const char *kind, int customer) {
        const std::string chart =
            database_.value(QStringLiteral("SELECT sn, name FROM Customer WHERE Customer_PK = %1").arg(customer)).toStdString();
        for (const statistics::Row &line : sheet(report, statistics::dayOf(day)).rows) {
            const std::string text = rendered(line);
            if (text.starts_with(chart + '|' + kind))
                return text.substr(chart.size() + 1);
        }
        return std::string("none");
    };
    EXPECT_EQ(row(QDate(2026, 3, 14), "당일", 2), "당일|10000|0|0|10000|0|23|29|31|121|1500");
    EXPECT_EQ(row(QDate(2026, 3, 14), "이전", 3), "이전|0|0|0|0|0|53|0|0|0|0");  // a receipt of the desk
    EXPECT_EQ(row(QDate(2026, 3, 14), "이전", 1), "이전|0|0|0|0|59|0|0|0|0|0"); // another customer's order
    EXPECT_EQ(row(QDate(2026, 3, 16), "이전", 2), "이전|0|0|0|0|0|61|0|0|0|0");
}

TEST_P(Figures, StockIsThatOfTheModulesOwnPane)
{
    statistics::StockReport report;
    const Period rate{lastDay.addDays(1 - statistics::Report::rateDays), lastDay};
    std::map<std::string, statistics::Row> byName;
    for (const statistics::Row &row : sheet(report, rate, 1).rows)
        byName[statistics::plainText(row[1]).toStdString()] = row;
    std::map<int, qint64> recent;
    for (const Line &line : lines(database_))
        recent[line.product] += line.date >= rate.first && line.date <= rate.last ? line.count : 0;

    const QStringList products = database_.rows("SELECT PM_PK, PM_Name FROM tPSProductMaster");
    ASSERT_GT(products.size(), 50);
    EXPECT_EQ(byName.size(), std::size_t(products.size()));
    for (const QString &product : products) {
        const int key = product.section(u'|', 0, 0).toInt();
        const QStringList out = database_.value(clsSQL().getStockSaleTotCountSQL(key)).split(u'|'); // loss, service, sale
        const qint64 in = database_.value(clsSQL().getStockIncomingTotCountSQL(key)).toLongLong();
        const qint64 left = in - out[0].toLongLong() - out[1].toLongLong() - out[2].toLongLong();
        const statistics::Row &row = byName[product.section(u'|', 1).toStdString()];
        ASSERT_EQ(row.size(), 12u) << product.toStdString();
        EXPECT_EQ(rendered(statistics::Row(row.begin() + 3, row.begin() + 8)),
                  QStringList({QString::number(in), QString::number(out[2].toLongLong()), QString::number(out[1].toLongLong()),
                               QString::number(out[0].toLongLong()), QString::number(left)}).join(u'|').toStdString())
            << product.toStdString();
        EXPECT_EQ(statistics::plainText(row[10]).toLongLong(), recent[key]);
        const bool lasts = left > 0 && recent[key] > 0;
        EXPECT_EQ(statistics::plainText(row[11]).toStdString(), lasts ? std::to_string(left * 90 / recent[key]) : std::string());
    }
}

TEST_P(Figures, StockIsWorthItsLastPriceAndTellsInWordsWhatRunsOut)
{
    statistics::StockReport report;
    const auto tail = [&](const char16_t *name) {
        for (const statistics::Row &row : sheet(report, {lastDay.addDays(-89), lastDay}, 2).rows) {
            if (statistics::plainText(row[1]) == QString::fromUtf16(name))
                return rendered(statistics::Row(row.begin() + 7, row.end())) + '|' + rendered({row[2]});
        }
        return std::string("none");
    };
    // left, last price, worth, gone in 90 days, days left, state
    EXPECT_EQ(tail(u"두 값"), "14|450|6300|91|13|곧 소진");
    EXPECT_EQ(tail(u"없이 판 것"), "-3|0|0|0||마이너스 재고");
    EXPECT_EQ(tail(u"다 판 것"), "0|10|0|0||재고 없음");
    // The other views hold the same and more.
    const std::size_t handled = sheet(report, wholeYear, 0).rows.size();
    EXPECT_LT(sheet(report, wholeYear, 2).rows.size(), handled);
    EXPECT_LT(handled, sheet(report, wholeYear, 1).rows.size());
}

TEST_P(Figures, BeginWithTheLastDayOfTheirTable)
{
    const auto lastDayOf = [&](const statistics::Report &report, QDate until) {
        QDate day;
        statistics::Figure figure{report.lastDayStatement()};
        figure.take = [&day](const statistics::Record &row) { day = row.date(0); };
        statistics::Reading(database_.connection(), {figure}, statistics::dayOf(until)).readAll();
        return day;
    };
    EXPECT_EQ(lastDayOf(statistics::SalesPeriodReport(), QDate(2099, 1, 1)), lastDay);
    EXPECT_EQ(lastDayOf(statistics::PayPeriodReport(), QDate(2026, 3, 14)), QDate(2026, 3, 14));
    EXPECT_FALSE(lastDayOf(statistics::PayPeriodReport(), QDate(1999, 1, 1)).isValid());
}

INSTANTIATE_TEST_SUITE_P(Engines, Figures, testing::ValuesIn(allEngines), engineName);
