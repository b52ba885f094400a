#include "bench/StatisticsBench.h"

#include "bench/BareStatement.h"
#include "bench/Work.h"
#include "components/VantoOneDay/OneDayReport.h"
#include "components/VantoPayPeriod/PayPeriodReport.h"
#include "components/VantoSalesItem/SalesItemReport.h"
#include "components/VantoSalesPeriod/SalesPeriodReport.h"
#include "components/VantoStock/StockReport.h"
#include "components/frame/KeptRows.h"
#include "components/frame/Reading.h"
#include "platform/runtime/Format.h"

#include <algorithm>
#include <memory>
#include <stdexcept>

namespace bench {

namespace {

using statistics::Figure;
using statistics::Period;
using statistics::Report;

const Period lastMonth{QDate(2026, 6, 1), QDate(2026, 6, 30)};
const Period lastYear{QDate(2025, 7, 1), QDate(2026, 6, 30)};

std::string filled(QString statement, const Period &period, const std::string &from, const std::string &to)
{
    statement.replace(QStringLiteral("[FIRST]"), runtime::dateText(period.first));
    statement.replace(QStringLiteral("[LAST]"), runtime::dateText(period.last));
    statement.replace(QStringLiteral("[FROM]"), QString::fromStdString(from));
    statement.replace(QStringLiteral("[TO]"), QString::fromStdString(to));
    return statement.toStdString();
}

/// The statement in one piece, as somebody would write it who does not mind the window.
std::string wholeStatement(sqlite3 *handle, const Figure &figure, const Period &period)
{
    if (figure.slices != Figure::Slices::Keys)
        return filled(figure.statement, period, runtime::dateText(period.first).toStdString(),
                      runtime::dateText(period.last).toStdString());
    BareStatement bounds(handle, filled(figure.bounds, period, {}, {}));
    bounds.step();
    return filled(figure.statement, period, std::to_string(bounds.integer(0)), std::to_string(bounds.integer(1)));
}

/// The stock as the engine sums it up all by itself.
std::vector<Figure> plainStock()
{
    const QString products = QStringLiteral("WHERE PM_PK BETWEEN [FROM] AND [TO] ");
    const auto bounds = [](const char *table) {
        return QStringLiteral("SELECT MIN(PM_PK), MAX(PM_PK) FROM ") + QLatin1String(table);
    };
    using enum Figure::Slices;
    return {
        {QStringLiteral("SELECT PM_PK, PM_Catagory, PM_Name, PM_IsValid FROM tPSProductMaster ") + products, Keys,
         bounds("tPSProductMaster")},
        {QStringLiteral("SELECT PM_PK, SUM(IN_Count) FROM tPSIncoming ") + products + QStringLiteral("GROUP BY PM_PK"),
         Keys, bounds("tPSIncoming")},
        {QStringLiteral("SELECT PM_PK, SUM(CASE WHEN COALESCE(OrdD_OrderType, 0) = 0 THEN OrdD_Count ELSE 0 END), "
                        "SUM(CASE WHEN OrdD_OrderType = 1 THEN OrdD_Count ELSE 0 END), "
                        "SUM(CASE WHEN OrdD_OrderType = 2 THEN OrdD_Count ELSE 0 END) FROM tPSOrderDetail ")
             + products + QStringLiteral("GROUP BY PM_PK"),
         Keys, bounds("tPSOrderDetail")},
        {QStringLiteral("SELECT tPSIncoming.PM_PK, MAX(IN_UnitPrice) FROM tPSIncoming INNER JOIN (SELECT PM_PK AS "
                        "Product, MAX(IN_Date) AS LastDate FROM tPSIncoming ")
             + products
             + QStringLiteral("GROUP BY PM_PK) AS Latest ON tPSIncoming.PM_PK = Latest.Product "
                              "AND IN_Date = Latest.LastDate ")
             + products + QStringLiteral("GROUP BY tPSIncoming.PM_PK"),
         Keys, bounds("tPSIncoming")},
        {statistics::stock::recent(statistics::Summed::Yes), Keys, statistics::orderBounds()}};
}

std::size_t readBare(sqlite3 *handle, const std::vector<Figure> &figures, const Period &period)
{
    std::size_t length = 0;
    for (const Figure &figure : figures) {
        BareStatement rows(handle, wholeStatement(handle, figure, period));
        std::string text;
        while (rows.step()) {
            for (int column = 0; column < rows.columns(); ++column)
                text += rows.text(column);
        }
        length += text.size();
    }
    return length;
}

void read(const ado::ConnectionPtr &connection, Report &report, const Period &period)
{
    statistics::Reading(connection, report.figures(period), period).readAll();
}

std::string totalsOf(const Report &report)
{
    QStringList cells;
    for (const statistics::Cell &cell : report.sheet(0).totals)
        cells << statistics::plainText(cell);
    return cells.join(u'|').toStdString();
}

/// The statements in one piece give the report the same totals as the slices; on a server only that there are some.
void checkSame(const ado::ConnectionPtr &connection, Report &report, const Period &period)
{
    read(connection, report, period);
    const std::string sliced = totalsOf(report);
    if (connection->engine() == ado::Engine::SQLite) {
        std::vector<Figure> figures = report.figures(period);
        for (Figure &figure : figures) {
            figure.statement = QString::fromStdString(wholeStatement(bareHandle(*connection), figure, period));
            figure.unsummed.clear();
            figure.slices = Figure::Slices::Whole;
        }
        statistics::Reading(connection, figures, period).readAll();
    }
    if (sliced != totalsOf(report) || sliced.find_first_of("123456789") == std::string::npos)
        throw std::runtime_error("statistics: slices and whole statements do not give the same: " + sliced + " and "
                                 + totalsOf(report));
}

/// Both give the same pieces, bought, sold, given and lost, in all.
void checkSameStock(sqlite3 *handle, const Report &stock, const Period &period)
{
    constexpr int firstColumn = 3; // of the pieces
    QStringList plain, shown;
    for (const std::size_t number : {1, 2}) {
        BareStatement rows(handle, wholeStatement(handle, plainStock()[number], period));
        std::vector<sqlite3_int64> sums(std::size_t(rows.columns() - 1));
        while (rows.step()) {
            for (std::size_t column = 0; column < sums.size(); ++column)
                sums[column] += rows.integer(int(column) + 1);
        }
        for (const sqlite3_int64 sum : sums)
            plain << QString::number(sum);
    }
    const statistics::Row totals = stock.sheet(1).totals; // of all products
    for (int column = firstColumn; column < firstColumn + int(plain.size()); ++column)
        shown << statistics::plainText(totals[std::size_t(column)]);
    if (plain != shown)
        throw std::runtime_error("statistics: the stock is not what the engine sums up: "
                                 + shown.join(u'|').toStdString() + " and " + plain.join(u'|').toStdString());
}

/// What is asked of a report: its name in the table and its days.
struct Question
{
    const char *name;
    Period period;
};

Question questionTo(const Report &report, Span span)
{
    if (report.asks() == Report::Asks::Day)
        return {"a day", statistics::dayOf(lastMonth.last)};
    return span == Span::Year ? Question{"a year", lastYear} : Question{"a month", lastMonth};
}

/// `plain`: what the bare interface runs, where the report has not got its amounts from the engine itself.
void registerReport(const OrderedClinic &clinic, const std::shared_ptr<Report> &report, Span span, double limit,
                    Table &table, const std::vector<Figure> &plain = {})
{
    const ado::ConnectionPtr connection = clinic.connection;
    const Question question = questionTo(*report, span);
    const Period period = question.period;
    const bool embedded = connection->engine() == ado::Engine::SQLite;
    const bool isKept = std::ranges::any_of(report->figures(period), &Figure::isKept);
    checkSame(connection, *report, period);
    const std::string title = report->title().toStdString() + ", " + question.name;
    const std::string name = "statistics/" + std::to_string(clinic.orders) + "/" + title;
    benchmark::RegisterBenchmark((name + "/report").c_str(), [=](benchmark::State &state) {
        for (auto _ : state) {
            statistics::KeptRows::ofComponent().forget();
            read(connection, *report, period);
        }
    });
    if (embedded) {
        benchmark::RegisterBenchmark((name + "/bare").c_str(), [=](benchmark::State &state) {
            for (auto _ : state)
                benchmark::DoNotOptimize(
                    readBare(bareHandle(*connection), plain.empty() ? report->figures(period) : plain, period));
        });
    }
    table.add({title + ", " + grouped(clinic.orders) + " orders", name + "/report", name + "/bare", limit});
    if (!isKept)
        return;
    benchmark::RegisterBenchmark((name + "/again").c_str(), [=](benchmark::State &state) {
        read(connection, *report, period);
        for (auto _ : state)
            read(connection, *report, period);
    });
    table.add({"the same once more, nothing changed", name + "/again", {}, 100});
}

} // namespace

void registerStatistics(const OrderedClinic &clinic, Table &table, Span span)
{
    registerReport(clinic, std::make_shared<statistics::SalesPeriodReport>(), span, 1.2, table);
    registerReport(clinic, std::make_shared<statistics::SalesItemReport>(), span, 1.0, table);
    registerReport(clinic, std::make_shared<statistics::PayPeriodReport>(), span, 1.2, table);
    if (span == Span::Year)
        return; // the others do not ask for days from and to
    registerReport(clinic, std::make_shared<statistics::OneDayReport>(), span, 1.0, table);
    const auto stock = std::make_shared<statistics::StockReport>();
    registerReport(clinic, stock, span, 0.9, table, plainStock());
    if (clinic.connection->engine() == ado::Engine::SQLite)
        checkSameStock(bareHandle(*clinic.connection), *stock, lastMonth);
}

} // namespace bench
