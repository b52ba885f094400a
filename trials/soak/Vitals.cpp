#include "trials/soak/Vitals.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <cstdio>
#include <stdexcept>

namespace trial {

namespace {

template <typename Value>
Value at(std::vector<Value> values, double part)
{
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    return values[std::size_t(double(values.size() - 1) * part)];
}

struct Measure
{
    const char *name;
    double (*of)(const Vitals &vitals); ///< below 0 for none
    double mostTimes;                   ///< that the last sixth may be of the second
    double andMore;                     ///< on top, for what is counted in ones or measured in fractions
};

// The latency of a machine that does other work as well differs by a third from one minute to another.
constexpr Measure measures[] = {
    {"memory, KiB", [](const Vitals &part) { return double(part.memory); }, 1.05, 512},
    {"handles", [](const Vitals &part) { return double(part.handles); }, 1.0, 0},
    {"p50, ms", [](const Vitals &part) { return part.operations ? part.median : -1; }, 1.5, 1},
    {"p95, ms", [](const Vitals &part) { return part.operations ? part.slow : -1; }, 1.5, 2},
};

double medianOf(const std::vector<Vitals> &parts, std::size_t sixth, const Measure &measure)
{
    std::vector<double> values;
    for (std::size_t part = parts.size() * sixth / 6; part < parts.size() * (sixth + 1) / 6; ++part)
        if (const double value = measure.of(parts[part]); value >= 0)
            values.push_back(value);
    return at(values, 0.5);
}

} // namespace

void look(Vitals &vitals, const QProcess &desk)
{
    const QString process = QStringLiteral("/proc/%1/").arg(desk.processId());
    QFile status(process + QStringLiteral("status"));
    if (!status.open(QIODevice::ReadOnly))
        throw std::runtime_error("a desk ended by itself");
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("RssAnon:"))
            vitals.memory = std::max(vitals.memory, line.mid(8).simplified().split(' ')[0].toLongLong());
    }
    const int handles = int(QDir(process + QStringLiteral("fd")).entryList(QDir::AllEntries | QDir::System).size()) - 2;
    vitals.handles = std::max(vitals.handles, handles);
}

void count(Vitals &vitals, const std::vector<std::vector<Deed>> &journals, qint64 from, qint64 to)
{
    std::vector<double> times;
    for (const auto &journal : journals) {
        for (const Deed &deed : journal) {
            if (deed.state == State::Done && deed.ended >= from && deed.ended < to)
                times.push_back(double(deed.ended - deed.begun) / 1000);
        }
    }
    vitals.operations = int(times.size());
    vitals.median = at(times, 0.5);
    vitals.slow = at(times, 0.95);
}

void printHead()
{
    std::printf("| part | acknowledged | p50 ms | p95 ms | memory KiB | handles | events |\n"
                "|---:|---:|---:|---:|---:|---:|---|\n");
}

void print(int part, const Vitals &vitals)
{
    std::printf("| %d | %d | %.1f | %.1f | %lld | %d | %s |\n", part, vitals.operations, vitals.median, vitals.slow,
                static_cast<long long>(vitals.memory), vitals.handles, qPrintable(vitals.events));
    std::fflush(stdout);
}

bool printWhetherFlat(const std::vector<Vitals> &parts)
{
    bool flat = true;
    std::printf("\n| median of | second sixth | last sixth | at most | |\n|---|---:|---:|---:|---|\n");
    for (const Measure &measure : measures) {
        const double second = medianOf(parts, 1, measure), last = medianOf(parts, 5, measure);
        const double limit = second * measure.mostTimes + measure.andMore;
        std::printf("| %s | %.1f | %.1f | %.1f | %s |\n", measure.name, second, last, limit,
                    last <= limit ? "flat" : "GROWS");
        flat = flat && last <= limit;
    }
    return flat;
}

} // namespace trial
