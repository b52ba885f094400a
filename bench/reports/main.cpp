#include "clinic/Tables.h"
#include "components/VantoOneDay/OneDayReport.h"
#include "components/VantoPayPeriod/PayPeriodReport.h"
#include "components/VantoSalesItem/SalesItemReport.h"
#include "components/VantoSalesPeriod/SalesPeriodReport.h"
#include "components/VantoStock/StockReport.h"
#include "components/frame/PeriodBar.h"
#include "components/frame/ReportWindow.h"
#include "desk/window/Look.h"
#include "platform/runtime/RuntimeError.h"

#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

using namespace statistics;

constexpr int repetitions = 5;
const QDate lastDay(2026, 6, 30); // of the sample clinics

template <typename Kind>
std::unique_ptr<Report> make()
{
    return std::make_unique<Kind>();
}

constexpr std::unique_ptr<Report> (*reports[])() = {make<SalesPeriodReport>, make<SalesItemReport>,
                                                    make<PayPeriodReport>, make<OneDayReport>, make<StockReport>};

struct Times
{
    qint64 whole = 0;   ///< ms from the choice until the report is painted
    qint64 longest = 0; ///< ms in which the window answered nothing
};

Times untilRead(const ReportWindow &window)
{
    Times times;
    QElapsedTimer sinceStart;
    sinceStart.start();
    bool painted = false;
    while (window.isReading() || !painted) {
        painted = !window.isReading(); // one more turn, for what is shown now
        QElapsedTimer turn;
        turn.start();
        QApplication::processEvents();
        times.longest = std::max(times.longest, turn.elapsed());
    }
    times.whole = sinceStart.elapsed();
    return times;
}

/// The worst of the repetitions counts, but for the first, which fills the caches.
Times measure(const ReportWindow &window, PeriodBar &bar, const Period &period)
{
    Times worst;
    for (int time = 0; time <= repetitions; ++time) {
        bar.choose(period);
        const Times times = untilRead(window);
        if (time > 0)
            worst = {std::max(worst.whole, times.whole), std::max(worst.longest, times.longest)};
    }
    return worst;
}

/// What is asked of a report, and how long it may take.
struct Question
{
    const char *name;
    Period period;
    qint64 limit; ///< ms
};

constexpr qint64 longestSilence = 200; ///< ms in which a window may answer nothing

std::vector<Question> questionsTo(const Report &report)
{
    switch (report.asks()) {
    case Report::Asks::Period:
        return {{"month", monthOf(lastDay), 1000}, {"year", {lastDay.addYears(-1).addDays(1), lastDay}, 3000}};
    case Report::Asks::Day:
        return {{"day", dayOf(lastDay), 1000}};
    case Report::Asks::LastDay:
        return {{"five years", dayOf(lastDay), 3000}}; // the stock counts all that was ever bought and sold
    }
    Q_UNREACHABLE();
}

/// The first of the views that show the same figures.
std::vector<int> viewsToRead(const Report &report)
{
    std::vector<int> views{0};
    for (int view = 1; view < report.views().size(); ++view) {
        if (report.readingOf(view) != report.readingOf(views.back()))
            views.push_back(view);
    }
    return views;
}

bool measureReport(std::unique_ptr<Report> report, const ado::ConnectionPtr &connection, const char *engine)
{
    const QString title = report->title();
    const std::vector<Question> questions = questionsTo(*report);
    const std::vector<int> views = viewsToRead(*report);
    ReportWindow window(std::move(report), connection);
    window.resize(1000, 700);
    window.show();
    untilRead(window);
    auto &bar = *window.findChild<PeriodBar *>();
    auto &viewBox = *window.findChild<QComboBox *>(QStringLiteral("cboView"));
    bool kept = true;
    for (const int view : views) {
        viewBox.setCurrentIndex(view);
        untilRead(window);
        const QString name = view == 0 ? title : title + QStringLiteral(", ") + viewBox.currentText();
        for (const Question &question : questions) {
            const Times times = measure(window, bar, question.period);
            const bool missed = times.whole > question.limit || times.longest > longestSilence;
            std::printf("| %s | %s | %s | %lld ms | %lld ms | %lld ms%s |\n", qUtf8Printable(name), question.name,
                        engine, static_cast<long long>(times.whole), static_cast<long long>(times.longest),
                        static_cast<long long>(question.limit), missed ? " **missed**" : "");
            std::fflush(stdout);
            kept = kept && !missed && window.sheet().rows.size() > 1;
        }
    }
    return kept;
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    desk::dressUp(application);
    clinic::registerTables();
    std::printf("| report | of a | engine | read and shown | longest without an answer | limit "
                "|\n|---|---|---|---:|---:|---:|\n");
    bool kept = argc > 1;
    try {
        for (int number = 1; number < argc; ++number) {
            const QString address = QString::fromLocal8Bit(argv[number]);
            const ado::ConnectionPtr connection = ado::Connection::open(address);
            const char *engine = address.startsWith(QStringLiteral("sqlite:")) ? "SQLite"
                                 : address.startsWith(QStringLiteral("odbc:")) ? "ODBC"
                                                                               : "PostgreSQL";
            for (const auto &report : reports)
                kept = measureReport(report(), connection, engine) && kept;
        }
    } catch (const runtime::RuntimeError &error) {
        std::fprintf(stderr, "report_times: %s\n", qUtf8Printable(error.description()));
        return 1;
    }
    return kept ? 0 : 1;
}
