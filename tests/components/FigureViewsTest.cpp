#include "components/VantoPayPeriod/PayPeriodReport.h"
#include "components/VantoSalesItem/SalesItemReport.h"
#include "components/VantoSalesPeriod/SalesPeriodReport.h"
#include "components/frame/OrderList.h"
#include "tests/components/SampleSums.h"

#include <algorithm>

using namespace samplerows;
using statistics::Period;

namespace {

class FiguresOfViews : public Figures
{
};

/// The twenty with the most in that column and, as one, all others.
std::string best(const Groups<int> &customers, std::size_t column, TestDatabase &database)
{
    std::vector<std::pair<int, std::vector<qint64>>> ranked(customers.begin(), customers.end());
    std::stable_sort(ranked.begin(), ranked.end(),
                     [column](const auto &a, const auto &b) { return a.second[column] > b.second[column]; });
    std::string all;
    std::vector<qint64> others;
    for (std::size_t place = 0; place < ranked.size(); ++place) {
        const auto &[key, sums] = ranked[place];
        const QString name =
            database.value(QStringLiteral("SELECT sn, name FROM Customer WHERE Customer_PK = %1").arg(key));
        if (place < 20)
            all += rowText(name.isEmpty() ? "|(삭제된 고객 " + std::to_string(key) + ')' : name.toStdString(), sums)
                   + '\n';
        else
            add(others, sums);
    }
    return all + rowText("|그 외 " + std::to_string(ranked.size() - 20) + "명", others);
}

} // namespace

TEST_P(FiguresOfViews, OfTheBestCustomersAndAllOthersAreThoseOfTheirOrders)
{
    const auto rowsOf = [](const statistics::Sheet &sheet) {
        const std::string all = rendered(sheet);
        return all.substr(0, all.rfind('\n'));
    };
    statistics::SalesPeriodReport sales;
    statistics::PayPeriodReport money;
    const statistics::Sheet bySale = sheet(sales, wholeYear, 3);
    const statistics::Sheet byMoney = sheet(money, wholeYear, 3);
    EXPECT_EQ(rowsOf(bySale), best(salesBy(byCustomer, database_), 5, database_));
    EXPECT_EQ(rowsOf(byMoney), best(moneyBy(byCustomer, database_), 8, database_));
    const auto amounts = [](const statistics::Sheet &sheet, int texts) {
        return rendered(statistics::Row(sheet.totals.begin() + texts, sheet.totals.end()));
    };
    EXPECT_EQ(amounts(bySale, 2), amounts(sheet(sales, wholeYear), 1));
    EXPECT_EQ(amounts(byMoney, 2), amounts(sheet(money, wholeYear), 1));
}

TEST_P(FiguresOfViews, OfACustomerWhoWasLookedForComeOutOfTheOthers)
{
    statistics::SalesPeriodReport report;
    const statistics::Sheet before = sheet(report, wholeYear, 3);
    ASSERT_EQ(before.rows.size(), 21u);
    const std::vector<int> found = report.customers().find(QStringLiteral("삭제된고객99999"));
    ASSERT_EQ(found.size(), 1u);
    ASSERT_GT(found[0], 20);
    EXPECT_EQ(report.setOut(found[0]), 20);
    const statistics::Sheet after = report.sheet(3);
    ASSERT_EQ(after.rows.size(), 22u);
    EXPECT_EQ(rendered(after.rows[20]), "|(삭제된 고객 99999)|1|0|0|0|0|0|0|0|0");
    EXPECT_EQ(statistics::plainText(after.rows[21][2]).toInt() + 1, statistics::plainText(before.rows[20][2]).toInt());
    EXPECT_EQ(rendered(after.totals), rendered(before.totals));
    EXPECT_EQ(report.setOut(7), 7);
    EXPECT_EQ(rendered(report.sheet(3)), rendered(before)) << "one of the best has a row already";
}

TEST_P(FiguresOfViews, OfTheMonthsOfAProductAreThoseOfItsPeriodsAndOfTheYearBefore)
{
    statistics::SalesItemReport items;
    statistics::SalesPeriodReport sales;
    const auto netOf = [&](const Period &period) { return sheet(items, period).totals.back(); };
    const auto cells = [](const statistics::Row &row) { return statistics::Row(row.begin() + 1, row.end()); };
    const struct
    {
        Period period;
        const char *first; ///< caption of the first month
        std::size_t months;
    } cases[] = {
        {{QDate(2025, 8, 11), QDate(2026, 2, 3)}, "2025-08", 7},
        {{QDate(2025, 7, 1), QDate(2026, 8, 31)}, "~ 2025-09", 12},
        {{QDate(2026, 9, 5), QDate(2027, 2, 28)}, "2026-09", 6}, // the year before has sales alone
    };
    for (const auto &one : cases) {
        const statistics::Sheet shown = sheet(items, one.period, 2);
        EXPECT_EQ(shown.columns[3].caption.toStdString(), one.first);
        ASSERT_EQ(shown.totals.size(), one.months + 3);
        statistics::Row expected{netOf(one.period), netOf(statistics::yearBefore(one.period))};
        for (const Period &month : statistics::monthsOf(one.period, 12))
            expected.push_back(netOf(month));
        EXPECT_EQ(rendered(cells(shown.totals)), rendered(expected));
        EXPECT_EQ(shown.totals[1], sheet(sales, one.period).totals[6]) << "of the sales by day";
        std::map<std::string, std::string> products; // name and net of the period
        for (const statistics::Row &row : sheet(items, one.period).rows)
            products[rendered({row[1]})] = rendered({row.back()});
        std::vector<statistics::Sum> sums(one.months + 2);
        for (const statistics::Row &row : shown.rows) {
            const auto product = products.find(rendered({row[0]}));
            EXPECT_EQ(rendered({row[1]}), product == products.end() ? "0" : product->second);
            for (std::size_t column = 0; column < sums.size(); ++column)
                sums[column] += statistics::Sum::of(row[column + 1]);
        }
        EXPECT_EQ(rendered(statistics::Row(sums.begin(), sums.end())), rendered(cells(shown.totals)));
    }
}

TEST_P(FiguresOfViews, AreMadeUpByTheOrdersBehindThem)
{
    statistics::SalesPeriodReport sales;
    statistics::PayPeriodReport money;
    statistics::SalesItemReport items;
    int orders = 0;
    for (statistics::Report *report : std::initializer_list<statistics::Report *>{&sales, &money, &items}) {
        for (int view = 0; view < report->views().size(); ++view) {
            const statistics::Sheet shown = sheet(*report, wholeYear, view);
            const auto last = int(shown.rows.size()) - 1;
            for (const int row : {-1, 0, last / 2, last}) {
                for (int column = 0; column < int(shown.columns.size()); ++column) {
                    statistics::OrderList list(report->behind(view, row, column).value());
                    const Period days = list.behind().period;
                    statistics::Reading(database_.connection(), list.orders(), days).readAll();
                    statistics::Reading(database_.connection(), list.details(), days).readAll();
                    const statistics::Cell &figure =
                        row < 0 ? shown.totals[std::size_t(column)] : shown.rows[std::size_t(row)][std::size_t(column)];
                    if (statistics::isNumber(figure)) {
                        EXPECT_EQ(list.behind().figure, figure);
                    }
                    EXPECT_TRUE(list.isWhole()) << report->title().toStdString() << ' ' << view << ' ' << row << ' '
                                                << column << ' ' << rendered(list.sheet());
                    orders += int(list.count());
                }
            }
        }
    }
    EXPECT_GT(orders, 1000);
}

TEST_P(FiguresOfViews, TellOfEachOrderBehindThemWhoseItWasAndWhatWasSold)
{
    const Period day = statistics::dayOf(QDate(2026, 3, 14));
    const auto behind = [&](statistics::Report &report, int column) {
        sheet(report, day);
        statistics::OrderList list(report.behind(0, 0, column).value());
        statistics::Reading(database_.connection(), list.orders(), day).readAll();
        statistics::Reading(database_.connection(), list.details(), day).readAll();
        return rendered(list.sheet());
    };
    const auto customer = [&](int key) {
        return database_.value(QStringLiteral("SELECT sn, name FROM Customer WHERE Customer_PK = %1").arg(key))
            .toStdString();
    };
    const std::string product = database_.value("SELECT PM_Name FROM tPSProductMaster WHERE PM_PK = 1").toStdString();
    const std::string gone = customer(1) + "|(삭제된 물품 99999) 3, (삭제된 물품 99999) -1|";
    statistics::SalesPeriodReport sales;
    EXPECT_EQ(behind(sales, 5), "2026-03-14|" + customer(2) + "|" + product + " 2, " + product + " -1|-800\n2026-03-14|"
                                    + gone + "-6400\n합계||||-7200");
    statistics::PayPeriodReport money;
    const std::string cash = behind(money, 1);
    for (const std::string &row : {std::string("||(삭제된 고객 99999)||67\n"), "|" + gone + "43\n",
                                   "|" + customer(3) + "|(거래가 아닌 수납)|53\n"})
        EXPECT_NE(cash.find("2026-03-14" + row), std::string::npos) << cash;
}

INSTANTIATE_TEST_SUITE_P(Engines, FiguresOfViews, testing::ValuesIn(allEngines), engineName);
