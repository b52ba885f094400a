#include "platform/runtime/RuntimeError.h"
#include "tests/support/PostgresServer.h"
#include "trials/interleavings/Judge.h"
#include "trials/interleavings/Operations.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>
#include <memory>

namespace {

using trial::Orders;

struct Wanted
{
    int most = 0;          ///< orders of one group
    int interruptions = 0; ///< at most, in one order
    int seed = 1;
    bool table = false;
};

QString nameOf(int operation)
{
    return QString::fromUtf8(trial::operations()[std::size_t(operation)].name);
}

class Trial
{
public:
    Trial(PostgresServer *server, trial::Desks &desks, const Wanted &wanted)
        : wanted_(wanted)
        , stage_(server)
        , desks_(desks)
    {
        for (trial::DeskProcess &desk : desks_)
            desk.open(stage_.address());
        judge_ = std::make_unique<trial::Judge>(stage_, desks_);
    }

    /// All orders of those operations, one at each desk.
    void runGroup(const std::vector<int> &group)
    {
        Orders orders(wanted_.most, wanted_.interruptions, unsigned(wanted_.seed));
        int faulty = 0;
        while (const auto first = orders.next()) {
            const trial::Played played = trial::play(stage_, desks_, group, *first);
            orders.ran(played.choices);
            const QStringList faults = judge_->faults(group, played);
            if (!faults.isEmpty() && faulty++ == 0)
                tell(group, played, faults);
            if (!played.trouble.isEmpty())
                throw std::runtime_error("the trial ends here");
        }
        ++groups_;
        orders_ += orders.count();
        faulty_ += faulty;
        const int upTo = orders.completeUpTo();
        every_ += upTo == Orders::everyOrder;
        if (wanted_.table)
            row(group, orders.count(), upTo, faulty);
    }

    int tellSum(const char *what) const
    {
        std::printf("%d %s: %d orders, of %d of them every one; %d orders with faults\n", groups_, what, orders_,
                    every_, faulty_);
        std::fflush(stdout);
        return faulty_ == 0 && orders_ > 0 ? 0 : 1;
    }

private:
    static void tell(const std::vector<int> &group, const trial::Played &played, const QStringList &faults)
    {
        std::printf("FAULT of");
        for (const int operation : group)
            std::printf(" '%s'", qPrintable(nameOf(operation)));
        std::printf(":\n");
        for (const QString &fault : faults)
            std::printf("    %s\n", fault.toUtf8().constData());
        for (const QString &step : played.steps)
            std::printf("        %s\n", step.toUtf8().constData());
    }

    void row(const std::vector<int> &group, int count, int upTo, int faulty) const
    {
        QStringList names;
        int statements = 0;
        for (const int operation : group) {
            names << nameOf(operation);
            statements += judge_->statements(operation);
        }
        const QString complete =
            upTo == Orders::everyOrder ? QStringLiteral("all") : QStringLiteral("%1 interruptions").arg(upTo);
        std::printf("| %s | %d | %d | %s | %d |\n", qPrintable(names.join(QStringLiteral(" + "))), statements, count,
                    qPrintable(complete), faulty);
        std::fflush(stdout);
    }

    const Wanted wanted_;
    trial::Stage stage_;
    trial::Desks &desks_;
    std::unique_ptr<trial::Judge> judge_;
    int groups_ = 0, orders_ = 0, every_ = 0, faulty_ = 0;
};

/// Those that go to one order, its ledger or the other product, where three desks can stand in one another's way.
std::vector<int> meeting()
{
    std::vector<int> found;
    for (const char *name :
         {"line on the selected order", "line of the other product", "delete a line", "delete an order",
          "save an order", "return on the sale's day", "further payment by its dialog", "change a ledger row",
          "delete a ledger row", "collect by its dialog", "change the other product", "delete a product"})
        found.push_back(trial::operationNamed(QString::fromUtf8(name)));
    return found;
}

void runPairs(Trial &trial)
{
    const int count = int(trial::operations().size());
    for (int one = 0; one < count; ++one)
        for (int other = one; other < count; ++other)
            trial.runGroup({one, other});
}

void runTriples(Trial &trial)
{
    const std::vector<int> all = meeting();
    for (std::size_t one = 0; one < all.size(); ++one)
        for (std::size_t two = one; two < all.size(); ++two)
            for (std::size_t three = two; three < all.size(); ++three)
                trial.runGroup({all[one], all[two], all[three]});
}

int run(const QCommandLineParser &arguments, trial::Desks &desks)
{
    const auto number = [&](const char *name) { return arguments.value(QLatin1String(name)).toInt(); };
    const Wanted wanted{number("orders"), number("interruptions"), number("seed"), arguments.isSet("table")};
    const QString engine = arguments.positionalArguments().value(0);
    if (engine != QLatin1String("sqlite") && engine != QLatin1String("postgresql"))
        throw std::runtime_error("name an engine: sqlite or postgresql");
    std::unique_ptr<PostgresServer> server;
    if (engine == QLatin1String("postgresql"))
        server = std::make_unique<PostgresServer>(PostgresServer::Writing::Careless);
    Trial trial(server.get(), desks, wanted);
    const QStringList only = arguments.values("only");
    if (!only.isEmpty()) {
        std::vector<int> group;
        for (const QString &name : only)
            group.push_back(trial::operationNamed(name));
        trial.runGroup(group);
        return trial.tellSum("group");
    }
    if (number("desks") == 3) {
        runTriples(trial);
        return trial.tellSum("triples");
    }
    runPairs(trial);
    return trial.tellSum("pairs");
}

} // namespace

/// trial_interleavings ENGINE [--desks 2|3] [--orders N] [--interruptions N] [--seed N] [--table] [--only NAME ...]
int main(int argc, char **argv)
{
    trial::Desks desks;
    for (int desk = 0; desk < 3; ++desk)
        desks.emplace_back();
    QCoreApplication application(argc, argv);
    QCommandLineParser arguments;
    for (const auto &[name, usual] : {std::pair("desks", "2"), std::pair("orders", "1000"),
                                      std::pair("interruptions", "99"), std::pair("seed", "1")})
        arguments.addOption({QLatin1String(name), {}, QStringLiteral("number"), QLatin1String(usual)});
    arguments.addOption({QStringLiteral("only"), {}, QStringLiteral("name")});
    arguments.addOption({QStringLiteral("table"), QStringLiteral("a row for each group")});
    arguments.process(application);
    try {
        return run(arguments, desks);
    } catch (const runtime::RuntimeError &error) {
        std::fprintf(stderr, "trial_interleavings: %s\n", qPrintable(error.description()));
    } catch (const std::exception &error) {
        std::fprintf(stderr, "trial_interleavings: %s\n", error.what());
    }
    return 1;
}
