#include "bench/far/Measure.h"
#include "platform/controls/MessageBox.h"
#include "platform/registry/AppSettings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>

namespace {

// Ways to a server and back that each action takes.
const std::map<std::string, int> waits{
    {"start of the desk, until its patients are painted", 3},
    {"open a patient, first of the day", 2},
    {"open another patient", 2},
    {"another order", 2},
    {"another product", 0},
    {"add a line, with a new order of today", 10},
    {"add a line to the order", 7},
    {"first payment", 3},
    {"further payment", 3},
    {"return", 10},
    {"edit an order and save", 4},
    {"delete an order", 4},
    {"a patient's outstanding list", 3},
    {"the management's tab, first time", 4},
    {"back to the sale", 1},
};

} // namespace

TEST(FarDesk, IsWaitedForNoOftenerThanItWas)
{
    const QTemporaryDir settings;
    registry::setStoreFolder(settings.path());
    controls::setMessageHandler([](const QString &text, int flags, const QString &, const QString &) {
        EXPECT_TRUE(flags & 0xF) << qPrintable(text);
        return flags & 0xF ? controls::Answer::Yes : controls::Answer::Confirm;
    });
    bench::Place place(sample::Size::Small);
    const std::vector<bench::Action> actions = bench::measure(place, 4);
    EXPECT_EQ(actions.size(), waits.size());
    for (const bench::Action &action : actions) {
        // A machine that is busy may let an answer come between two messages, or a second pass.
        const bench::Taken &fastest =
            *std::ranges::min_element(action.rounds, {}, [](const bench::Taken &one) { return one.traffic.waits; });
        std::string told;
        for (const std::string &statement : fastest.traffic.told())
            told += statement + '\n';
        EXPECT_LE(fastest.traffic.waits, waits.at(action.what)) << action.what << '\n' << told;
    }
    controls::setMessageHandler({});
    registry::setStoreFolder(QString());
}
