#include "bench/reports/ReportTimes.h"
#include "clinic/Tables.h"
#include "components/VantoOneDay/OneDayReport.h"
#include "components/VantoPayPeriod/PayPeriodReport.h"
#include "components/VantoSalesItem/SalesItemReport.h"
#include "components/VantoSalesPeriod/SalesPeriodReport.h"
#include "components/VantoStock/StockReport.h"
#include "components/frame/KeptRows.h"
#include "components/frame/PeriodBar.h"
#include "components/frame/ReportWindow.h"
#include "desk/window/Look.h"
#include "platform/runtime/RuntimeError.h"

#include <QApplication>
#include <QComboBox>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

using namespace statistics;
using namespace bench;

int repetitions = 5;
const QDate lastDay(2026, 6, 30); // of the sample clinics

template <typename Kind>
std::unique_ptr<Report> make()
{
    return std::make_unique<Kind>();
}

constexpr std::unique_ptr<Report> (*reports[])() = {make<SalesPeriodReport>, make<SalesItemReport>,
                                                    make<PayPeriodReport>, make<OneDayReport>, make<StockReport>};

enum class Look { First, Again };

/// The worst of the repetitions counts, but for the first, which fills the caches.
ReportTimes measure(const ReportWindow &window, PeriodBar &bar, const Period &period, Look look)
{
    ReportTimes all;
    for (int time = 0; time <= repetitions; ++time) {
        if (look == Look::First)
            KeptRows::ofComponent().forget();
        bar.choose(period);
        const ReportTimes times = untilRead(window);
        if (time > 0)
            all = worst(all, times);
    }
    return all;
}

/// What is asked of a report, and how long it may take.
struct Question
{
    const char *name;
    Period period;
    qint64 limit; ///< ms
    Look look = Look::First;
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
        // The stock counts all that was ever bought and sold.
        return {{"five years", dayOf(lastDay), 3000}, {"five years, once more", dayOf(lastDay), 300, Look::Again}};
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

QString orNothing(qint64 milliseconds, qint64 least)
{
    return milliseconds < least ? QString() : QStringLiteral("%1 ms").arg(milliseconds);
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
            const ReportTimes times = measure(window, bar, question.period, question.look);
            const std::size_t rows = window.sheet().rows.size();
            if (question.look == Look::First)
                KeptRows::ofComponent().forget();
            bar.choose(question.period);
            const qint64 stopped = question.look == Look::First ? untilStopped(window) : -1;
            const bool missed = times.whole > question.limit || times.longest > longestSilence;
            std::printf("| %s | %s | %s | %lld ms | %lld ms | %lld ms%s | %s | %s | %.0f MB |\n", qUtf8Printable(name),
                        question.name, engine, static_cast<long long>(times.whole),
                        static_cast<long long>(times.longest), static_cast<long long>(question.limit),
                        missed ? " **missed**" : "", qPrintable(orNothing(times.firstSign, 1)),
                        qPrintable(orNothing(stopped, 0)), double(times.memory) / 1000);
            std::fflush(stdout);
            kept = kept && !missed && rows > 1;
        }
    }
    return kept;
}

} // namespace

/// report_times [--once] ADDRESS...
int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    desk::dressUp(application);
    clinic::registerTables();
    std::printf(
        "| report | of a | engine | read and shown | longest without an answer | limit | first sign of progress "
        "| stopped within | memory |\n|---|---|---|---:|---:|---:|---:|---:|---:|\n");
    bool kept = argc > 1;
    try {
        for (int number = 1; number < argc; ++number) {
            const QString address = QString::fromLocal8Bit(argv[number]);
            if (address == QLatin1String("--once")) {
                repetitions = 1;
                continue;
            }
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
