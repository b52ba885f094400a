#include "bench/SaleWindow.h"
#include "bench/far/Measure.h"
#include "platform/ado/Foresight.h"
#include "platform/ado/Waiting.h"
#include "platform/controls/MessageBox.h"
#include "platform/registry/AppSettings.h"

#include <QTest>
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

class FarDesk : public testing::Test
{
protected:
    FarDesk()
    {
        registry::setStoreFolder(settings_.path());
        controls::setMessageHandler([](const QString &text, int flags, const QString &, const QString &) {
            EXPECT_TRUE(flags & 0xF) << qPrintable(text);
            return flags & 0xF ? controls::Answer::Yes : controls::Answer::Confirm;
        });
    }
    ~FarDesk() override
    {
        controls::setMessageHandler({});
        registry::setStoreFolder(QString());
    }

    bench::Place place{sample::Size::Small};

private:
    QTemporaryDir settings_;
};

/// Whether the widget is painted while a server is waited for.
class WaitWatch : public QObject
{
public:
    explicit WaitWatch(QWidget &widget) { widget.installEventFilter(this); }
    int paintedUnderWait = 0;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        paintedUnderWait += event->type() == QEvent::Paint && ado::serverIsAwaited();
        return false;
    }
};

} // namespace

TEST_F(FarDesk, IsWaitedForNoOftenerThanItWas)
{
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
}

/// The first window is laid out and drawn there before it is shown.
TEST_F(FarDesk, LooksAsItDoesNearBy)
{
    int drawnUnseen = 0;
    const auto picture = [&](const QString &address) {
        const ado::ConnectionPtr connection = ado::Connection::open(address);
        bench::SaleWindow window(connection);
        window.open(place.patient(0));
        drawnUnseen += ado::Foresight(connection).isOfFarServer();
        return window.grid("tdbCustSaleMaster").window()->grab().toImage();
    };
    const QImage far = picture(place.far());
    EXPECT_EQ(drawnUnseen, 1);
    EXPECT_EQ(far, picture(place.near()));
    EXPECT_EQ(drawnUnseen, 1) << "only where there is time for it";
}

TEST_F(FarDesk, PaintsAllElseWhileTheNamesOfTheLinesTravel)
{
    bench::SaleWindow window(ado::Connection::open(place.far()));
    window.open(place.patient(0));
    const controls::RecordsetGrid &lines = window.grid("tdbCustSaleDetails");
    WaitWatch ledger(*window.grid("tdbCustTranManage").viewport());
    controls::RecordsetGrid &orders = window.grid("tdbCustSaleMaster");
    orders.setFocus();
    QTest::keyClick(&orders, Qt::Key_Home);
    bench::untilPainted();
    EXPECT_EQ(ledger.paintedUnderWait, 1);
    int names = 0;
    for (std::size_t column = 0; column < lines.columns().size(); ++column) {
        if (lines.columns()[column].kind == controls::GridColumn::Kind::Unbound)
            names += !lines.model()->index(0, int(column)).data().toString().isEmpty();
    }
    EXPECT_EQ(names, 1);
}
