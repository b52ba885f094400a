#include "bench/StatisticsBench.h"

#include "bench/BareStatement.h"
#include "bench/Work.h"
#include "components/VantoOneDay/OneDayReport.h"
#include "components/VantoPayPeriod/PayPeriodReport.h"
#include "components/VantoSalesItem/SalesItemReport.h"
#include "components/VantoSalesPeriod/SalesPeriodReport.h"
#include "components/VantoStock/StockReport.h"
#include "components/frame/Reading.h"
#include "platform/runtime/Format.h"

#include <memory>
#include <stdexcept>

namespace bench {

namespace {

using statistics::Figure;
using statistics::Period;
using statistics::Report;

const Period lastMonth{QDate(2026, 6, 1), QDate(2026, 6, 30)};

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

std::size_t readBare(sqlite3 *handle, Report &report, const Period &period)
{
    std::size_t length = 0;
    for (const Figure &figure : report.figures(period)) {
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

/// The statements in one piece give the report the same totals as the slices.
void checkSame(const ado::ConnectionPtr &connection, Report &report, const Period &period)
{
    read(connection, report, period);
    const std::string sliced = totalsOf(report);
    std::vector<Figure> figures = report.figures(period);
    for (Figure &figure : figures) {
        figure.statement = QString::fromStdString(wholeStatement(bareHandle(*connection), figure, period));
        figure.slices = Figure::Slices::Whole;
    }
    statistics::Reading(connection, figures, period).readAll();
    if (sliced != totalsOf(report) || sliced.find_first_of("123456789") == std::string::npos)
        throw std::runtime_error("statistics: slices and whole statements do not give the same");
}

void registerReport(const ado::ConnectionPtr &connection, const std::shared_ptr<Report> &report, double limit,
                    Table &table)
{
    const bool ofDay = report->asks() == Report::Asks::Day;
    const Period period = ofDay ? statistics::dayOf(lastMonth.last) : lastMonth;
    checkSame(connection, *report, period);
    const std::string title = report->title().toStdString();
    const std::string name = "statistics/" + title;
    benchmark::RegisterBenchmark((name + "/report").c_str(), [=](benchmark::State &state) {
        for (auto _ : state)
            read(connection, *report, period);
    });
    benchmark::RegisterBenchmark((name + "/bare").c_str(), [=](benchmark::State &state) {
        for (auto _ : state)
            benchmark::DoNotOptimize(readBare(bareHandle(*connection), *report, period));
    });
    table.add(
        {title + (ofDay ? ", a day" : ", a month") + ", 1,000,000 orders", name + "/report", name + "/bare", limit});
}

} // namespace

void registerStatistics(const Clinics &clinics, Table &table)
{
    registerReport(clinics.large, std::make_shared<statistics::SalesPeriodReport>(), 1.2, table);
    registerReport(clinics.large, std::make_shared<statistics::SalesItemReport>(), 1.0, table);
    registerReport(clinics.large, std::make_shared<statistics::PayPeriodReport>(), 1.2, table);
    registerReport(clinics.large, std::make_shared<statistics::OneDayReport>(), 1.0, table);
    registerReport(clinics.large, std::make_shared<statistics::StockReport>(), 1.2, table);
}

} // namespace bench
