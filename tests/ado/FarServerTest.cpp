#include "platform/ado/Foresight.h"
#include "platform/ado/Meanwhile.h"
#include "platform/ado/Transaction.h"
#include "tests/ado/Desks.h"
#include "tests/support/Wire.h"

#include <QThread>

#include <gmock/gmock.h>
#include <libpq-fe.h>

#include <cstdio>
#include <functional>
#include <memory>
#include <stdexcept>

// Of a server that is far away not the statements cost time but the waits for their answers.

namespace {

using testing::HasSubstr;

/// What a session sends, by the library's own trace.
class Sent
{
public:
    explicit Sent(const ado::ConnectionPtr &connection)
        : session_(static_cast<PGconn *>(connection->handle()))
    {
        PQtrace(session_, trace_.get());
        PQsetTraceFlags(session_, PQTRACE_SUPPRESS_TIMESTAMPS);
    }
    ~Sent() { PQuntrace(session_); }
    Sent(const Sent &) = delete;
    Sent &operator=(const Sent &) = delete;

    /// The first words of the statements since the last call, " | " where an answer was waited for.
    QString take()
    {
        QStringList runs;
        bool heard = true;
        std::fflush(trace_.get());
        std::fseek(trace_.get(), read_, SEEK_SET);
        char line[4096];
        while (std::fgets(line, sizeof line, trace_.get())) {
            const QString message = QString::fromUtf8(line);
            if (message.startsWith(u'B'))
                heard = true;
            if (!message.contains(QStringLiteral("\tParse\t")))
                continue;
            const QString statement = message.section(u'"', 3, 3).section(u' ', 0, 1);
            if (std::exchange(heard, false))
                runs << statement;
            else
                runs.back() += QStringLiteral("; ") + statement;
        }
        read_ = std::ftell(trace_.get());
        return runs.join(QStringLiteral(" | "));
    }

private:
    PGconn *session_;
    struct Close
    {
        void operator()(std::FILE *file) const { std::fclose(file); }
    };
    std::unique_ptr<std::FILE, Close> trace_{std::tmpfile()};
    long read_ = 0;
};

const QString prices = QStringLiteral("SELECT SUM(PM_UnitPrice) AS value FROM tPSProductMaster");
const QString goods = QStringLiteral("SELECT COUNT(*) AS value FROM tPSProductMaster");

} // namespace

class FarServer : public Desks
{
protected:
    FarServer() { addProducts({"one", "two"}); }
    QString valueOf(const QString &select)
    {
        return runtime::text(opened(select, CursorType::Static, LockType::ReadOnly)->value("value"));
    }
    void add() { desk->Execute(QStringLiteral("INSERT INTO tPSProductMaster (PM_UnitPrice) VALUES (5000)")); }
    void addElsewhere() { addProducts({"three"}); }
};
INSTANTIATE_TEST_SUITE_P(Engines, FarServer, testing::Values(ado::Engine::PostgreSQL), engineName);

TEST_P(FarServer, IsWaitedForOncePerStatementOfATransactionAndOncePerList)
{
    Sent sent(desk);
    desk->BeginTrans();
    add();
    desk->holdRow(QStringLiteral("tPSProductMaster"), QStringLiteral("PM_PK"), 1);
    desk->CommitTrans();
    EXPECT_EQ(sent.take(), "BEGIN; SAVEPOINT statement; INSERT INTO; RELEASE SAVEPOINT | "
                           "SAVEPOINT statement; SELECT PM_PK; RELEASE SAVEPOINT | COMMIT");
    EXPECT_EQ(opened(allProducts)->rowCount(), 3);
    EXPECT_EQ(sent.take(), "SELECT tPSProductMaster.PM_PK; SELECT *");
}

TEST_P(FarServer, RefusesOneOfATransactionAndRunsNothingBehindIt)
{
    desk->BeginTrans();
    add();
    EXPECT_TRUE(errorOf([&] { desk->Execute(QStringLiteral("INSERT INTO tPSProductMaster (PM_PK) VALUES (1)")); }));
    add();
    desk->CommitTrans();
    EXPECT_EQ(valueOf(goods), "4");
    EXPECT_EQ(errorOf([&] { desk->Execute(QStringLiteral("BEGIN")), desk->read(QStringLiteral("SELECT 1 / 0")); }),
              ErrorNumber::Database);
    EXPECT_EQ(valueOf(goods), "4") << "a transaction of somebody else's goes on";
    desk->Execute(QStringLiteral("ROLLBACK"));
}

/// What was told to come is what the server held with the first of it, and no older than that.
TEST_P(FarServer, AnswersWhatWasToldToComeInOneGo)
{
    Sent sent(desk);
    const auto foreseen = [&] {
        auto next = std::make_unique<ado::Foresight>(desk);
        next->open(prices, CursorType::Static).open(goods, CursorType::Static);
        return next;
    };
    const struct
    {
        const char *what;
        std::function<void()> between;
        const char *seen;
    } cases[] = {
        {"nothing", [] {}, "2"},
        {"a statement of this desk", [&] { desk->read(QStringLiteral("SELECT 1")), addElsewhere(); }, "3"},
        {"its own writing", [&] { add(); }, "4"},
        {"a box", [&] { QThread::msleep(1100), addElsewhere(); }, "5"},
        {"a transaction", [&] { desk->BeginTrans(), add(); }, "6"},
    };
    for (const auto &one : cases) {
        const auto next = foreseen();
        sent.take();
        valueOf(prices);
        EXPECT_EQ(sent.take().count(u'|'), 0) << one.what;
        one.between();
        EXPECT_EQ(valueOf(goods), one.seen) << one.what;
    }
    desk->CommitTrans();
    {
        const auto next = foreseen();
        valueOf(prices);
    }
    addElsewhere();
    EXPECT_EQ(valueOf(goods), "7") << "nobody expects it any more";
}

TEST_P(FarServer, IsWaitedForOnceWithACommitAndWhatIsReadBehindIt)
{
    const QString quoted = QStringLiteral("SELECT COUNT(*) AS value FROM tPSProductMaster WHERE PM_Name = 'one'");
    Sent sent(desk);
    ado::Foresight shown(desk, ado::Foresight::Behind::Commit);
    shown.open(goods, CursorType::Static).open(prices, CursorType::Static).open(quoted, CursorType::Static);
    const auto save = [&](const char *statement, const char *behind) {
        desk->BeginTrans();
        desk->Execute(QLatin1String(statement));
        sent.take();
        desk->CommitTrans();
        EXPECT_EQ(sent.take(),
                  QLatin1String("COMMIT; SELECT COUNT(*); SELECT SUM(PM_UnitPrice)") + QLatin1String(behind));
    };
    save("INSERT INTO tPSProductMaster (PM_UnitPrice) VALUES (5000)", "; SELECT COUNT(*)");
    {
        ado::Foresight within(desk);
        within.open(goods, CursorType::Static);
        EXPECT_EQ(valueOf(goods), "3");
    }
    EXPECT_EQ(valueOf(prices), "8000");
    EXPECT_EQ(sent.take(), "") << "what came stays where it is told again";
    EXPECT_EQ(valueOf(quoted), "1");
    EXPECT_EQ(sent.take(), "");
    save("DELETE FROM tPSProductMaster WHERE PM_PK = abs(-1)", ""); // a literal stays behind what calls something
    add();
    EXPECT_EQ(valueOf(goods), "3") << "something else was sent";
}

TEST_P(FarServer, WaitsOnceForALockThatWasToldToCome)
{
    const QString table = QStringLiteral("tPSProductMaster"), key = QStringLiteral("PM_PK");
    const ado::ConnectionPtr &other = clinic.otherDesk();
    other->BeginTrans();
    other->holdRow(table, key, 2);
    desk->Execute(QStringLiteral("SET lock_timeout = '200ms'"));
    desk->BeginTrans();
    add();
    Sent sent(desk);
    {
        ado::Foresight next(desk);
        next.hold(table, key, 2);
        EXPECT_TRUE(desk->holdRow(table, key, 1));
        EXPECT_EQ(errorOf([&] { desk->holdRow(table, key, 2); }), ErrorNumber::Database);
    }
    EXPECT_EQ(sent.take(), "SAVEPOINT statement; SELECT PM_PK; RELEASE SAVEPOINT; "
                           "SAVEPOINT statement; SELECT PM_PK; RELEASE SAVEPOINT | ROLLBACK TO | ROLLBACK TO");
    other->RollbackTrans();
    ado::Foresight next(desk);
    next.hold(table, key, 2);
    EXPECT_TRUE(desk->holdRow(table, key, 1) && desk->holdRow(table, key, 2)) << "the transaction goes on";
    EXPECT_EQ(sent.take().count(u'|'), 0);
    EXPECT_TRUE(errorOf([&] {
        other->Execute(QStringLiteral("SET lock_timeout = '100ms'"));
        other->Execute(QStringLiteral("DELETE FROM tPSProductMaster WHERE PM_PK = 2"));
    })) << "it is held";
    desk->CommitTrans();
    EXPECT_EQ(valueOf(goods), "3");
}

TEST_P(FarServer, TakesTheCommitAlongWithTheLastWriting)
{
    const QString rename = QStringLiteral("UPDATE tPSProductMaster SET PM_Name = 'other' WHERE PM_PK = 2"),
                  twice = QStringLiteral("INSERT INTO tPSProductMaster (PM_PK) VALUES (1)");
    const auto products = opened(allProducts);
    const auto typed = [&] { products->setValue(QStringLiteral("PM_Name"), QStringLiteral("typed")); };
    Sent sent(desk);
    const struct
    {
        const char *what;
        std::function<void(ado::Transaction &)> end;
        const char *sent;
        const char *names;
    } cases[] = {
        {"a statement", [&](ado::Transaction &work) { work.commitWith(rename); },
         "SAVEPOINT statement; UPDATE tPSProductMaster; RELEASE SAVEPOINT; COMMIT", "one other NULL"},
        {"a row", [&](ado::Transaction &work) { typed(), work.commitWith(*products); },
         "SAVEPOINT statement; UPDATE tPSProductMaster; RELEASE SAVEPOINT | "
         "SAVEPOINT statement; SELECT *; RELEASE SAVEPOINT; COMMIT",
         "typed other NULL NULL"},
        {"a failure", [&](ado::Transaction &work) { EXPECT_TRUE(errorOf([&] { work.commitWith(twice); })); },
         "SAVEPOINT statement; INSERT INTO; RELEASE SAVEPOINT; COMMIT | ROLLBACK TO", "typed other NULL NULL"},
        {"a conflict",
         [&](ado::Transaction &work) {
             typed();
             clinic.run(QStringLiteral("UPDATE tPSProductMaster SET PM_Name = 'theirs' WHERE PM_PK = 1"));
             EXPECT_EQ(errorOf([&] { work.commitWith(*products); }), ErrorNumber::Conflict);
         },
         "SAVEPOINT statement; UPDATE tPSProductMaster; RELEASE SAVEPOINT", "theirs other NULL NULL"},
    };
    for (const auto &one : cases) {
        {
            ado::Transaction work(*desk);
            add();
            sent.take();
            one.end(work);
            EXPECT_EQ(sent.take(), one.sent) << one.what;
        }
        EXPECT_EQ(names().join(u' '), one.names) << one.what;
        EXPECT_FALSE(desk->inTransaction()) << one.what;
    }
    desk->BeginTrans();
    add();
    {
        const ado::AbandonedTransactions handler;
        ado::Transaction(*desk).commitWith(rename);
    }
    desk->RollbackTrans();
    EXPECT_EQ(valueOf(goods), "4") << "a host's transaction is not ended";
}

TEST_P(FarServer, DoesNotTellOfACommitWithoutAnAnswerThatItWasCancelled)
{
    Wire wire;
    const ado::ConnectionPtr far = ado::Connection::open(wire.address(clinic.serverDatabase()));
    const auto products = opened(allProducts, CursorType::Keyset, LockType::Optimistic, far);
    ado::Transaction work(*far);
    products->setValue(QStringLiteral("PM_Name"), QStringLiteral("typed"));
    wire.cutAtWriting(1, Wire::Moment::Unanswered);
    EXPECT_THAT(refusal([&] { work.commitWith(*products); }), HasSubstr("저장되었는지"));
    EXPECT_EQ(names().join(u' '), "typed two");
}

TEST_P(FarServer, SendsSeveralWritingsWithTheNextAndRunsNoneBehindOneThatFails)
{
    const QString one = QStringLiteral("INSERT INTO tPSProductMaster (PM_UnitPrice) VALUES (1)"),
                  wrong = QStringLiteral("INSERT INTO tPSProductMaster (PM_PK) VALUES (1)");
    Sent sent(desk);
    desk->BeginTrans();
    desk->Execute(QStringList{one, one});
    EXPECT_EQ(sent.take(), "");
    EXPECT_EQ(valueOf(goods), "4");
    EXPECT_EQ(sent.take(), "BEGIN; SAVEPOINT statement; INSERT INTO; RELEASE SAVEPOINT; "
                           "SAVEPOINT statement; INSERT INTO; RELEASE SAVEPOINT; "
                           "SAVEPOINT statement; SELECT COUNT(*); RELEASE SAVEPOINT");
    desk->Execute(QStringList{one, wrong, one});
    EXPECT_TRUE(errorOf([&] { desk->Execute(one); }));
    desk->CommitTrans();
    EXPECT_EQ(valueOf(goods), "5");
    desk->BeginTrans();
    desk->Execute(QStringList{one, wrong});
    EXPECT_TRUE(errorOf([&] { desk->CommitTrans(); }));
    EXPECT_EQ(valueOf(goods), "5");
    desk->BeginTrans();
    desk->Execute(QStringList{one, one});
    desk->RollbackTrans();
    EXPECT_EQ(valueOf(goods), "5");
}

TEST_P(FarServer, IsWaitedForOnceForALongListThatItOrdersAlike)
{
    for (int name = 170; name > 100; --name)
        addProducts({QByteArray::number(name).constData()});
    Sent sent(desk);
    const auto list = opened(QStringLiteral("SELECT * FROM tPSProductMaster ORDER BY PM_Name"));
    EXPECT_EQ(list->valueAt(63, list->columnIndex(QStringLiteral("PM_Name"))), "164");
    EXPECT_EQ(sent.take(), "SELECT tPSProductMaster.PM_PK,; SELECT *");
}

TEST_P(FarServer, AnswersWhatCameInAnyOrder)
{
    Sent sent(desk);
    ado::Foresight next(desk);
    next.open(prices, CursorType::Static).open(goods, CursorType::Static);
    desk->read(QStringLiteral("SELECT 1"));
    addElsewhere();
    EXPECT_EQ(valueOf(goods), "2");
    EXPECT_EQ(valueOf(prices), "3000");
    EXPECT_EQ(sent.take().count(u'|'), 0);
    EXPECT_EQ(valueOf(goods), "3") << "each once";
}

/// What is done before it is read is done while it travels; whatever else is sent first hears it and leaves it.
TEST_P(FarServer, AsksForWhatIsToldAndWaitsForItNoSoonerThanItIsRead)
{
    Sent sent(desk);
    const struct
    {
        const char *what;
        std::function<void()> between;
        const char *sent;
        const char *seen;
    } cases[] = {
        {"nothing", [] {}, "", "2"},
        {"a statement of this desk", [&] { addElsewhere(), desk->read(QStringLiteral("SELECT 1")); },
         "SELECT 1 | SELECT COUNT(*) | SELECT SUM(PM_UnitPrice)", "3"},
        {"a transaction", [&] { desk->BeginTrans(), add(), desk->RollbackTrans(); },
         "BEGIN; SAVEPOINT statement; INSERT INTO; RELEASE SAVEPOINT | ROLLBACK | SELECT COUNT(*) | "
         "SELECT SUM(PM_UnitPrice)",
         "3"},
        {"a host's look", [&] { EXPECT_EQ(PQtransactionStatus(static_cast<PGconn *>(desk->handle())), PQTRANS_IDLE); },
         "", "3"},
    };
    for (const auto &one : cases) {
        bool waited = false;
        const ado::Meanwhile watch([&] { waited = true; });
        ado::Foresight next(desk);
        next.open(prices, CursorType::Static).open(goods, CursorType::Static);
        next.send();
        EXPECT_EQ(sent.take(), "SELECT SUM(PM_UnitPrice); SELECT COUNT(*)") << one.what;
        EXPECT_FALSE(waited || desk->inTransaction()) << one.what;
        one.between();
        EXPECT_EQ(valueOf(goods), one.seen) << one.what;
        EXPECT_TRUE(waited) << one.what;
        valueOf(prices);
        EXPECT_EQ(sent.take(), one.sent) << one.what;
    }
    ado::Foresight next(desk);
    next.open(goods, CursorType::Static);
    next.send();
    clinic.run(QStringLiteral("SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE datname = "
                              "current_database() AND pid <> pg_backend_pid()"));
    EXPECT_EQ(valueOf(goods), "3") << "the session was lost";
}

TEST_P(FarServer, TellsTheKeysOfAListThatHasCome)
{
    ado::Foresight next(desk);
    next.open(prices, CursorType::Static).open(allProducts, CursorType::Keyset);
    EXPECT_THAT(next.keysThatCame(allProducts), testing::IsEmpty());
    valueOf(prices);
    EXPECT_THAT(next.keysThatCame(allProducts), testing::UnorderedElementsAre(1, 2));
    Sent sent(desk);
    EXPECT_EQ(opened(allProducts, CursorType::Keyset)->rowCount(), 2);
    EXPECT_EQ(sent.take(), "") << "they stay to be read";
    EXPECT_THAT(next.keysThatCame(allProducts), testing::IsEmpty());
}

/// Its settings go with the first reading, but behind no writing that needs them.
TEST_P(FarServer, HasItsSettingsWhateverIsDoneFirst)
{
    desk->Execute(QStringLiteral("DO $$BEGIN EXECUTE format('ALTER DATABASE %I SET DateStyle = German', "
                                 "current_database()); END$$"));
    desk->Execute(QStringLiteral("CREATE TABLE days (day text)"));
    const QString isoDay = QStringLiteral("2026-11-30"), select = QStringLiteral("SELECT DATE '2026-11-30'");
    const auto reading = [&](ado::Connection &first) { return first.read(select).raw(0, 0).toString(); };
    const auto writing = [&](ado::Connection &first) {
        first.Execute(QStringLiteral("INSERT INTO days SELECT CAST(DATE '2026-11-30' AS text)"));
        return first.read(QStringLiteral("SELECT day FROM days")).raw(0, 0).toString();
    };
    const auto inTransaction = [&](ado::Connection &first) {
        first.BeginTrans();
        first.Execute(QStringLiteral("UPDATE days SET day = CAST(DATE '2026-11-30' AS text)"));
        first.CommitTrans();
        return first.read(QStringLiteral("SELECT day FROM days")).raw(0, 0).toString();
    };
    const auto byHandle = [&](ado::Connection &first) {
        PGresult *const day = PQexec(static_cast<PGconn *>(first.handle()), qPrintable(select));
        const QString text = QString::fromUtf8(PQgetvalue(day, 0, 0));
        PQclear(day);
        return text;
    };
    const std::function<QString(ado::Connection &)> uses[]{reading, writing, inTransaction, byHandle};
    for (const auto &use : uses) {
        const ado::ConnectionPtr first = ado::Connection::open(clinic.address());
        EXPECT_EQ(use(*first), isoDay);
        EXPECT_EQ(first->read(QStringLiteral("SHOW lock_timeout")).raw(0, 0).toString(), "8s");
    }
}

TEST_P(FarServer, LetsWorkBeDoneOnceWhileAnAnswerTravels)
{
    int done = 0;
    {
        const ado::Meanwhile nothingIsAsked([&] { ++done; });
    }
    EXPECT_EQ(done, 0);
    const ado::Meanwhile work([&] {
        ++done;
        EXPECT_EQ(errorOf([&] { desk->read(goods); }), ErrorNumber::InvalidCall) << "of one that waits";
        throw std::runtime_error("goes no further");
    });
    EXPECT_EQ(valueOf(goods), "2");
    EXPECT_EQ(valueOf(prices), "3000");
    EXPECT_EQ(done, 1);
}

TEST_P(FarServer, DoesNotLetATellingGoWrong)
{
    const QString nothing = QStringLiteral("SELECT COUNT(*) AS value FROM nothing"),
                  quoted = QStringLiteral("SELECT COUNT(*) AS value FROM tPSProductMaster WHERE PM_Name = 'one'");
    for (const bool inside : {false, true}) {
        if (inside)
            desk->BeginTrans(), add();
        ado::Foresight next(desk);
        next.open(goods, CursorType::Static).open(nothing, CursorType::Static).open(prices, CursorType::Static);
        EXPECT_EQ(valueOf(goods), inside ? "3" : "2");
        Sent sent(desk);
        EXPECT_EQ(errorOf([&] { valueOf(nothing); }), ErrorNumber::Database);
        EXPECT_EQ(valueOf(prices), inside ? "8000" : "3000");
        EXPECT_EQ(sent.take().isEmpty(), !inside) << "outside a transaction each stands for itself";
        ado::Foresight literal(desk);
        literal.open(goods, CursorType::Static).open(quoted, CursorType::Static);
        valueOf(goods);
        sent.take();
        EXPECT_EQ(valueOf(quoted), "1");
        EXPECT_EQ(sent.take(), "") << "it came behind one that calls nothing";
        ado::Foresight behindCall(desk);
        behindCall.open(quoted, CursorType::Static);
        desk->read(QStringLiteral("SELECT set_config('standard_conforming_strings', 'off', false)"));
        EXPECT_THAT(sent.take().toStdString(), testing::Not(HasSubstr("COUNT"))) << "a literal is read by settings";
        EXPECT_TRUE(errorOf([&] { valueOf(quoted); })) << "which are looked at before it is sent";
    }
    desk->CommitTrans();
    ado::Foresight copy(desk);
    copy.read(QStringLiteral("COPY tPSProductMaster TO STDOUT"));
    EXPECT_EQ(valueOf(goods), "3") << "one that goes on by itself is not sent ahead";
}
