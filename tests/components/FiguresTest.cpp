#include "components/VantoOneDay/OneDayReport.h"
#include "components/VantoPayPeriod/PayPeriodReport.h"
#include "components/VantoSalesItem/SalesItemReport.h"
#include "components/VantoSalesPeriod/SalesPeriodReport.h"
#include "components/VantoStock/StockReport.h"
#include "data/clsSQL.h"
#include "tests/components/SampleSums.h"
#include "tests/support/Statements.h"

#include <algorithm>

using namespace samplerows;
using statistics::Period;

TEST_P(Figures, SalesOfEveryDayAreThoseOfItsLines)
{
    statistics::SalesPeriodReport report;
    EXPECT_EQ(rendered(sheet(report, wholeYear)),
              rendered(salesBy(byDay, database_), statistics::SalesPeriodReport::Amounts));
}

TEST_P(Figures, MoneyOfEveryDayIsThatOfTheLedger)
{
    statistics::PayPeriodReport report;
    EXPECT_EQ(rendered(sheet(report, wholeYear)),
              rendered(moneyBy(byDay, database_), statistics::PayPeriodReport::Amounts));
}

TEST_P(Figures, OfAPeriodAreTheSumsOfItsDaysWeeksAndMonths)
{
    const Period period{QDate(2026, 2, 11), QDate(2026, 4, 9)}; // begins and ends within a week and a month
    statistics::SalesPeriodReport sales;
    statistics::PayPeriodReport money;
    for (statistics::Report *report :
         {static_cast<statistics::Report *>(&sales), static_cast<statistics::Report *>(&money)}) {
        std::vector<statistics::Sum> days;
        for (QDate day = period.first; day <= period.last; day = day.addDays(1)) {
            const statistics::Row totals = sheet(*report, statistics::dayOf(day)).totals;
            days.resize(std::max(days.size(), totals.size() - 1));
            for (std::size_t column = 1; column < totals.size(); ++column)
                days[column - 1] += std::get<runtime::Currency>(totals[column]);
        }
        for (int view = 0; view < 3; ++view) {
            const statistics::Sheet whole = sheet(*report, period, view);
            EXPECT_EQ(rendered(whole.totals), rendered(statistics::rowOfAmounts(QStringLiteral("합계"), days))) << view;
            std::vector<statistics::Sum> rows(days.size());
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
        expected.push_back(
            rowText(names.isEmpty() ? "|(삭제된 물품 " + std::to_string(key) + ")" : names.toStdString(), sums));
        std::vector<qint64> &group = groups[names.isEmpty() ? "(분류 없음)" : names.section(u'|', 0, 0).toStdString()];
        group.resize(Columns);
        std::transform(group.begin(), group.end(), sums.begin(), group.begin(), std::plus<>());
    }
    std::vector<std::string> expectedGroups;
    for (const auto &[category, sums] : groups)
        expectedGroups.push_back(rowText(category, sums));

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
    const auto allOrders = ordersOf(database_);
    statistics::OneDayReport report;
    for (QDate day = QDate(2026, 3, 2); day < QDate(2026, 3, 20); day = day.addDays(1)) {
        std::map<std::string, qint64> sums;
        std::map<std::pair<int, int>, qint64> unpaid; // of the day's orders, but for what was paid as outstanding
        std::map<int, bool> ofTheDay;
        for (const auto &[key, order] : allOrders) {
            if (order.date != day)
                continue;
            unpaid[key] = order.total;
            ofTheDay[order.key] = true;
            ++sums["매출/거래"];
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
            const bool moves = row.operation >= 1 && row.operation <= 4;
            const bool asOutstanding = row.operation == 3 && row.method.startsWith(QLatin1Char('1'));
            if (const auto order = unpaid.find({row.order, row.customer});
                order != unpaid.end() && row.date <= day && moves)
                order->second -= row.operation == 4 ? -row.money : asOutstanding ? 0 : row.money;
            if (row.date != day || row.operation == 0)
                continue;
            const bool cash = medium(row.method) == 0;
            if (row.operation == 3) {
                sums[std::string("수납/") + (cash ? "현금" : medium(row.method) == 1 ? "카드" : "통장")] += row.money;
                sums["수납/순수납"] += row.money;
                sums["미수·감면/미수 수납"] += isLate(row, allOrders) ? row.money : 0;
                sums["현금 시재/현금 수납"] += cash ? row.money : 0;
                sums["현금 시재/현금 증감"] += cash ? row.money : 0;
            } else if (row.operation == 4) {
                sums["수납/환불"] -= row.money;
                sums["수납/순수납"] -= row.money;
                sums["현금 시재/현금 환불"] -= cash ? row.money : 0;
                sums["현금 시재/현금 증감"] -= cash ? row.money : 0;
            } else {
                sums[row.operation == 2 ? "미수·감면/수납 시 할인" : "미수·감면/절사"] += row.money;
            }
        }
        for (const auto &[key, left] : unpaid)
            sums["미수·감면/미수 발생"] += std::max<qint64>(left, 0);
        const statistics::Sheet shown = sheet(report, statistics::dayOf(day));
        ASSERT_EQ(shown.summary.size(), 17u);
        for (const statistics::SummaryLine &line : shown.summary)
            EXPECT_EQ(statistics::plainText(line.amount).toStdString(),
                      std::to_string(sums[(line.group + u'/' + line.caption).toStdString()]))
                << day.toString(Qt::ISODate).toStdString() << ' ' << line.caption.toStdString();
    }
}

TEST_P(Figures, OfOneDayNameThePatientOfEveryOrderAndOfMoneyForOlderOnes)
{
    statistics::OneDayReport report;
    const auto row = [&](QDate day, const char *kind, int customer) {
        const std::string chart =
            database_.value(QStringLiteral("SELECT sn, name FROM Customer WHERE Customer_PK = %1").arg(customer))
                .toStdString();
        for (const statistics::Row &line : sheet(report, statistics::dayOf(day)).rows) {
            const std::string text = rendered(line);
            if (text.starts_with(chart + '|' + kind))
                return text.substr(chart.size() + 1);
        }
        return std::string("none");
    };
    EXPECT_EQ(row(QDate(2026, 3, 14), "당일", 2), "당일|10000|0|0|10000|0|23|29|31|-121|5038");
    EXPECT_EQ(row(QDate(2026, 3, 14), "이전", 3), "이전|0|0|0|0|0|53|0|0|0|0"); // a receipt of the desk
    EXPECT_EQ(row(QDate(2026, 3, 14), "이전", 1), "이전|0|0|0|0|59|0|0|0|0|0"); // another customer's order
    EXPECT_EQ(row(QDate(2026, 3, 16), "이전", 2), "이전|0|0|0|0|0|61|0|0|0|0");
}

// Money for the orders of a day that comes on the next day, however it is coded and whatever else is stored with it.
TEST_P(Figures, OfADayStayWhenItsOrdersArePaidLater)
{
    const QDate day(2026, 3, 10);
    const auto told = [&](const QDate &of) {
        statistics::OneDayReport report;
        const statistics::Sheet shown = sheet(report, statistics::dayOf(of));
        std::string all = rendered(shown);
        for (const statistics::SummaryLine &line : shown.summary)
            all += '\n' + line.caption.toStdString() + ' ' + statistics::plainText(line.amount).toStdString();
        return std::pair(all, shown.summary);
    };
    const auto lateOf = [](const std::vector<statistics::SummaryLine> &summary) {
        const auto line = std::find_if(summary.begin(), summary.end(),
                                       [](const auto &one) { return one.caption == QStringLiteral("미수 수납"); });
        return statistics::plainText(line->amount).toLongLong();
    };
    const auto periodOf = [&](const QDate &of) {
        statistics::PayPeriodReport report;
        return sheet(report, statistics::dayOf(of)).totals;
    };
    const auto before = told(day);
    const auto nextBefore = told(day.addDays(1));
    const statistics::Row moneyBefore = periodOf(day.addDays(1));
    const int order = database_.value("SELECT MAX(OrdM_PK) FROM tPSOrderMaster WHERE OrdM_Date = '2026-03-10'").toInt();
    ASSERT_GT(order, 0);
    const QString stored = database_.value(
        QStringLiteral("SELECT Cust_PK, OrdM_Misugum FROM tPSOrderMaster WHERE OrdM_PK = %1").arg(order));
    const QString row =
        QStringLiteral("(%1, %2, '2026-03-11', %3, %4, %5, 'later')").arg(stored.section(u'|', 0, 0)).arg(order);
    database_.run(
        QStringLiteral(
            "INSERT INTO tPSTransaction (tpstrans_Customer_PK, tpstrans_OrderM_PK, tpstrans_Date, tpstrans_Operator, "
            "tpstrans_Money, tpstrans_Method, tpstrans_Memo) VALUES ")
        + QStringList{row.arg(3).arg(1000).arg("'00'"), row.arg(3).arg(300).arg("'01'"), row.arg(3).arg(70).arg("'10'"),
                      row.arg(3).arg(5).arg("NULL"), row.arg(2).arg(40).arg("''"), row.arg(4).arg(20).arg("'00'")}
              .join(u','));
    database_.run(QStringLiteral("UPDATE tPSOrderMaster SET OrdM_Misugum = 1 WHERE OrdM_PK = %1").arg(order));

    EXPECT_EQ(told(day).first, before.first);
    EXPECT_EQ(lateOf(told(day.addDays(1)).second), lateOf(nextBefore.second) + 1375);
    const statistics::Row money = periodOf(day.addDays(1));
    const auto grown = [&](std::size_t column) {
        return statistics::plainText(money[column + 1]).toLongLong()
               - statistics::plainText(moneyBefore[column + 1]).toLongLong();
    };
    using Money = statistics::PayPeriodReport;
    EXPECT_EQ(grown(Money::Cash), 0);
    EXPECT_EQ(grown(Money::LateCash), 1075);
    EXPECT_EQ(grown(Money::LateCard), 300);
    EXPECT_EQ(grown(Money::Refunded), -20);

    database_.run("DELETE FROM tPSTransaction WHERE tpstrans_Memo = 'later'");
    database_.run(QStringLiteral("UPDATE tPSOrderMaster SET OrdM_Misugum = %1 WHERE OrdM_PK = %2")
                      .arg(stored.section(u'|', 1, 1))
                      .arg(order));
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
        const QStringList out =
            database_.value(clsSQL().getStockSaleTotCountSQL(key)).split(u'|'); // loss, service, sale
        const qint64 in = database_.value(clsSQL().getStockIncomingTotCountSQL(key)).toLongLong();
        const qint64 left = in - out[0].toLongLong() - out[1].toLongLong() - out[2].toLongLong();
        const statistics::Row &row = byName[product.section(u'|', 1).toStdString()];
        ASSERT_EQ(row.size(), 12u) << product.toStdString();
        EXPECT_EQ(rendered(statistics::Row(row.begin() + 3, row.begin() + 8)),
                  QStringList({QString::number(in), QString::number(out[2].toLongLong()),
                               QString::number(out[1].toLongLong()), QString::number(out[0].toLongLong()),
                               QString::number(left)})
                      .join(u'|')
                      .toStdString())
            << product.toStdString();
        EXPECT_EQ(statistics::plainText(row[10]).toLongLong(), recent[key]);
        const bool lasts = left > 0 && recent[key] > 0;
        EXPECT_EQ(statistics::plainText(row[11]).toStdString(),
                  lasts ? std::to_string(left * 90 / recent[key]) : std::string());
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

// A product's code, scanned into the field of the quantity.
TEST_P(Figures, BeyondMeasureAreAQuestionMarkAndTheOthersStayRight)
{
    const Period rate{lastDay.addDays(-89), lastDay};
    statistics::StockReport report;
    const statistics::Sheet before = sheet(report, rate, 1);
    EXPECT_FALSE(before.remark.contains(QLatin1Char('?')));
    database_.run(
        "INSERT INTO tPSProductMaster (PM_PK, PM_Catagory, PM_Name, PM_IsValid) VALUES (9101, '힣', '바코드', 1)");
    database_.run("INSERT INTO tPSIncoming (PM_PK, CM_PK, IN_Date, IN_Count, IN_UnitPrice) VALUES (9101, 1, "
                  "'2026-06-05', 8801234567890, 450)");
    database_.run("INSERT INTO tPSOrderDetail (OrdM_PK, PM_PK, OrdD_UnitPrice, OrdD_Count) "
                  "SELECT MAX(OrdM_PK), 9101, 1000, 1 FROM tPSOrderMaster WHERE OrdM_PK < 90000");

    const statistics::Sheet after = sheet(report, rate, 1);
    ASSERT_EQ(after.rows.size(), before.rows.size() + 1);
    EXPECT_EQ(rendered(after.rows.back()),
              "힣|바코드|확인 필요|8801234567890|1|0|0|8801234567889|450|?|1|792111111110010");
    for (std::size_t row = 0; row < before.rows.size(); ++row)
        EXPECT_EQ(rendered(after.rows[row]), rendered(before.rows[row]));
    EXPECT_EQ(rendered({after.totals[9]}), "?") << "no total that is not whole";
    EXPECT_EQ(statistics::plainText(after.totals[4]).toLongLong(),
              statistics::plainText(before.totals[4]).toLongLong() + 1);
    EXPECT_TRUE(after.remark.startsWith("'?'")) << after.remark.toStdString();
    EXPECT_EQ(after.chart.categories, before.chart.categories);

    for (const char *table : {"tPSProductMaster", "tPSIncoming", "tPSOrderDetail"})
        database_.run(QStringLiteral("DELETE FROM %1 WHERE PM_PK = 9101").arg(QLatin1String(table)));
}

// A shop that was never told the types of its columns holds what it is given.
TEST(FiguresOnSqlite, OfACellThatHoldsNoAmountAreAQuestionMarkInEveryTotal)
{
    TestDatabase database(ado::Engine::SQLite, false);
    runFile(database, "components/untyped.sql");
    const auto told = [&](statistics::Report &report, const Period &period, int view) {
        statistics::Reading(database.connection(), report.figuresOf(view, period), period).readAll();
        const statistics::Sheet sheet = report.sheet(view);
        EXPECT_TRUE(sheet.remark.startsWith("'?'")) << sheet.remark.toStdString();
        return rendered(sheet);
    };
    const Period june = statistics::monthOf(QDate(2026, 6, 1));
    statistics::StockReport stock;
    EXPECT_EQ(told(stock, june, 1),
              "|가|확인 필요|3|1|0|0|2|?|?|1|60\n|나||3|1|0|0|2|300|600|1|60\n합계|||6|2|0|0|4||?|2|");
    statistics::SalesPeriodReport sales;
    EXPECT_EQ(told(sales, june, 0),
              "2026-06-10 (수)|1|1000|0|0|0|1000|1000|0\n2026-06-11 (목)|1|?|0|0|0|?|?|0\n합계|2|?|0|0|0|?|?|0");
    EXPECT_EQ(told(sales, june, 3), "|(삭제된 고객 1)|2|?|0|0|0|?|?|0\n합계||2|?|0|0|0|?|?|0");
    statistics::SalesItemReport items;
    EXPECT_EQ(told(items, june, 0), "|가|1|0|0|0|1000\n|나|1|0|0|0|?\n합계||2|0|0|0|?");
    EXPECT_EQ(told(items, june, 2), "가|1000|0|1000\n나|?|0|?\n합계|?|0|?");
    statistics::PayPeriodReport money;
    EXPECT_EQ(told(money, june, 2), "2026-06|1000|?|0|0|0|0|?|0|?|0|0\n합계|1000|?|0|0|0|0|?|0|?|0|0");
    statistics::OneDayReport day;
    EXPECT_EQ(told(day, statistics::dayOf(QDate(2026, 6, 11)), 0),
              "||당일|?|0|0|?|0|0|?|0|0|?\n합계|||?|0|0|?|0|0|?|0|0|?");
}

TEST(FiguresOnSqlite, FindTheEndsOfAllKeysWithoutGoingThroughThem)
{
    TestDatabase clinic(ado::Engine::SQLite);
    for (const statistics::Figure &figure : statistics::StockReport().figures(wholeYear)) {
        const QString plan = clinic.rows(QStringLiteral("EXPLAIN QUERY PLAN ") + figure.bounds).join(u'\n');
        EXPECT_TRUE(plan.contains("SEARCH tPS")) << plan.toStdString();
        EXPECT_FALSE(plan.contains("SCAN tPS")) << plan.toStdString();
    }
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
