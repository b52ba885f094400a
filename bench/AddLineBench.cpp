#include "bench/AddLineBench.h"

#include "bench/BareStatement.h"
#include "bench/SaleWindow.h"
#include "bench/TypicalPatients.h"
#include "platform/controls/MessageBox.h"
#include "platform/controls/PushCheck.h"

#include <QTest>

namespace bench {

namespace {

constexpr int Steps = 10; ///< in one repetition

/// Answers the question of today's date with yes; any other box is a failure.
class YesSayer
{
public:
    YesSayer()
    {
        controls::setMessageHandler([this](const QString &, int flags, const QString &, const QString &) {
            const bool question = (flags & 0xF) == controls::YesNoCancel;
            failed_ = failed_ || !question;
            return question ? controls::Answer::Yes : controls::Answer::Confirm;
        });
    }
    ~YesSayer() { controls::setMessageHandler({}); }
    YesSayer(const YesSayer &) = delete;
    YesSayer &operator=(const YesSayer &) = delete;

    bool failed() const { return failed_; }

private:
    bool failed_ = false;
};

/// The patient's orders since the clinic was made.
class TodaysOrders
{
public:
    TodaysOrders(const ado::ConnectionPtr &connection, int lngCustPK)
        : handle_(bareHandle(*connection))
        , ofToday_(" FROM tPSOrderMaster WHERE Cust_PK = " + std::to_string(lngCustPK) + " AND OrdM_Date = '"
                   + QDate::currentDate().toString(Qt::ISODate).toStdString() + "'")
    {
    }

    sqlite3_int64 lines() const
    {
        BareStatement count(handle_,
                            "SELECT COUNT(*) FROM tPSOrderDetail WHERE OrdM_PK IN (SELECT OrdM_PK" + ofToday_ + ")");
        count.step();
        return count.integer(0);
    }
    void remove() const
    {
        runBare(handle_, "DELETE FROM tPSOrderDetail WHERE OrdM_PK IN (SELECT OrdM_PK" + ofToday_ + ")");
        runBare(handle_, "DELETE" + ofToday_);
    }

private:
    sqlite3 *handle_;
    std::string ofToday_;
};

void addLines(benchmark::State &state, const ado::ConnectionPtr &connection, const desk::Patient &patient,
              bool newOrder)
{
    const YesSayer answers;
    const TodaysOrders today(connection, patient.key);
    SaleWindow window(connection);
    window.open(patient);
    auto &append = window.control<QAbstractButton>("cmdCSAppendDetail");
    const auto add = [&] {
        QTest::mouseClick(&append, Qt::LeftButton);
        untilPainted();
    };
    if (!newOrder)
        add();
    sqlite3_int64 added = 0;
    for (auto _ : state) {
        if (newOrder) {
            state.PauseTiming();
            today.remove();
            window.open(patient);
            state.ResumeTiming();
        }
        add();
        ++added;
    }
    if (answers.failed() || today.lines() != (newOrder ? 1 : added + 1))
        state.SkipWithError("the lines were not added");
    today.remove();
}

} // namespace

void registerAddLine(const Clinics &clinics, Table &table)
{
    const ado::ConnectionPtr connection = clinics.large;
    const desk::Patient patient = typicalPatients(*connection).front();
    for (const bool newOrder : {false, true}) {
        const std::string name = newOrder ? "add_line/new_order" : "add_line/order";
        benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State &state) {
            addLines(state, connection, patient, newOrder);
        })->Iterations(Steps);
        table.add({newOrder ? "the same with a new order of today" : "add a line, painted", name, {}, 100});
    }
}

} // namespace bench
