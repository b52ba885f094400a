#include "platform/ado/OneMoment.h"
#include "platform/ado/Transaction.h"
#include "tests/ado/Desks.h"

#include <QDir>
#include <QThread>

#include <sqlite3.h>

#include <cstdlib>
#include <functional>
#include <thread>

namespace {

int refuseRollback(void *, int action, const char *what, const char *, const char *, const char *)
{
    return action == SQLITE_TRANSACTION && qstrcmp(what, "ROLLBACK") == 0 ? SQLITE_DENY : SQLITE_OK;
}

/// From now on the connection cannot roll back, nor be opened anew while its folder is away.
void makeRollbackFail(const ado::ConnectionPtr &connection)
{
    sqlite3_set_authorizer(static_cast<sqlite3 *>(connection->handle()), refuseRollback, nullptr);
}

ado::ConnectionPtr keptByTheHost;

} // namespace

TEST(SqliteConnection, ThatCanNeitherRollBackNorReopenLeavesTheOthersAloneAndIsFoundAgain)
{
    QTemporaryDir folder;
    const QString place = folder.filePath(QStringLiteral("here")), away = folder.filePath(QStringLiteral("away"));
    ASSERT_TRUE(QDir().mkdir(place));
    const ado::ConnectionPtr broken =
        ado::Connection::open(QStringLiteral("sqlite:") + place + QStringLiteral("/a.db"), true);
    const ado::ConnectionPtr sound =
        ado::Connection::open(QStringLiteral("sqlite:") + folder.filePath(QStringLiteral("b.db")), true);
    for (const ado::ConnectionPtr &connection : {broken, sound})
        connection->Execute(QStringLiteral("CREATE TABLE money (won INTEGER)"));
    const auto count = [](const ado::ConnectionPtr &connection) {
        Recordset rows;
        rows.Open(QStringLiteral("SELECT COUNT(*) AS n FROM money"), connection, CursorType::Static,
                  LockType::ReadOnly);
        return runtime::text(rows.value("n"));
    };
    {
        ado::AbandonedTransactions edge;
        for (const ado::ConnectionPtr &connection : {broken, sound}) {
            connection->BeginTrans();
            connection->Execute(QStringLiteral("INSERT INTO money VALUES (1)"));
        }
        makeRollbackFail(broken);
        ASSERT_TRUE(QDir().rename(place, away));
        EXPECT_EQ(errorOf([&] { edge.rollBack(); }), ErrorNumber::ConnectionLost);
    }
    EXPECT_FALSE(broken->inTransaction() || sound->inTransaction());
    EXPECT_EQ(count(sound), "0");
    EXPECT_EQ(errorOf([&] { count(broken); }), ErrorNumber::ConnectionLost);
    EXPECT_EQ(errorOf([&] { broken->Execute(QStringLiteral("INSERT INTO money VALUES (2)")); }),
              ErrorNumber::ConnectionLost);
    ASSERT_TRUE(QDir().rename(away, place));
    QThread::msleep(1100); // a desk does not ask again more than once a second
    EXPECT_EQ(count(broken), "0");
}

TEST(SqliteConnection, ThatCannotRollBackDoesNotHideTheErrorBeforeIt)
{
    QTemporaryDir folder;
    const QString place = folder.filePath(QStringLiteral("here"));
    ASSERT_TRUE(QDir().mkdir(place));
    const ado::ConnectionPtr broken =
        ado::Connection::open(QStringLiteral("sqlite:") + place + QStringLiteral("/a.db"), true);
    const auto told = errorOf([&] {
        ado::Transaction scope(*broken);
        broken->Execute(QStringLiteral("CREATE TABLE money (won INTEGER)"));
        makeRollbackFail(broken);
        ASSERT_TRUE(QDir().rename(place, folder.filePath(QStringLiteral("away"))));
        throw runtime::RuntimeError(ErrorNumber::TypeMismatch, QStringLiteral("x"));
    });
    EXPECT_EQ(told, ErrorNumber::TypeMismatch);
    EXPECT_FALSE(broken->inTransaction());
}

TEST(SqliteConnection, KeptInAGlobalOfTheHostsEndsWithTheProcess)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto leave = [] {
        TestDatabase clinic(ado::Engine::SQLite);
        keptByTheHost = ado::Connection::open(clinic.address());
        Recordset().Open(allProducts, keptByTheHost, CursorType::Keyset, LockType::Optimistic);
        keptByTheHost->BeginTrans();
        keptByTheHost->Execute(QStringLiteral("INSERT INTO tPSProductMaster (PM_Name) VALUES ('a')"));
        std::exit(0);
    };
    EXPECT_EXIT(leave(), testing::ExitedWithCode(0), "");
}

TEST(SqliteConnection, ReadsOneMomentUntilItIsLetGoOrSomethingIsWritten)
{
    TestDatabase clinic(ado::Engine::SQLite);
    const ado::ConnectionPtr &desk = clinic.connection();
    const auto add = [](const ado::ConnectionPtr &where) {
        where->Execute(QStringLiteral("INSERT INTO tPSProductMaster (PM_Name) VALUES ('a')"));
    };
    const auto seen = [&] {
        return desk->read(QStringLiteral("SELECT COUNT(*) FROM tPSProductMaster")).raw(0, 0).toInt();
    };
    {
        const ado::OneMoment moment(desk);
        EXPECT_TRUE(moment.isHeld());
        EXPECT_FALSE(ado::OneMoment(desk).isHeld()) << "the one without stands on";
        add(clinic.otherDesk());
        EXPECT_EQ(seen(), 0);
    }
    EXPECT_EQ(seen(), 1);
    for (const bool inTransaction : {false, true}) {
        const ado::OneMoment moment(desk);
        add(clinic.otherDesk());
        if (inTransaction)
            desk->BeginTrans();
        add(desk); // which the engine refuses to a reader of an earlier moment
        if (inTransaction)
            desk->CommitTrans();
    }
    EXPECT_EQ(seen(), 5);
}

TEST(SqliteConnection, WaitsForTheDeskThatWritesAFileWithoutALog)
{
    TestDatabase clinic(ado::Engine::SQLite);
    clinic.connection()->Execute(QStringLiteral("PRAGMA journal_mode = DELETE"));
    const ado::ConnectionPtr desk = ado::Connection::open(clinic.address());
    const QByteArray file = clinic.address().mid(QStringLiteral("sqlite:").size()).toUtf8();
    sqlite3 *other = nullptr;
    ASSERT_EQ(sqlite3_open(file.constData(), &other), SQLITE_OK);
    const auto does = [&](const char *text) {
        return sqlite3_exec(other, text, nullptr, nullptr, nullptr) == SQLITE_OK;
    };
    ASSERT_TRUE(does("BEGIN IMMEDIATE") && does("INSERT INTO tPSProductMaster (PM_Name) VALUES ('a')"));
    std::thread later([&] {
        QThread::msleep(100);
        EXPECT_TRUE(does("COMMIT"));
    });
    EXPECT_NO_THROW(desk->Execute(QStringLiteral("INSERT INTO tPSProductMaster (PM_Name) VALUES ('b')")));
    later.join();
    sqlite3_close(other);
}

TEST(AnotherThread, IsRefusedWithAnError)
{
    TestDatabase clinic(ado::Engine::SQLite);
    const ado::ConnectionPtr &desk = clinic.connection();
    clinic.run("INSERT INTO t_HospSetup (HS_KEY) VALUES ('a')");
    Recordset rows;
    rows.Open(QStringLiteral("SELECT * FROM t_HospSetup"), desk, CursorType::Keyset, LockType::Optimistic);
    desk->BeginTrans();
    const std::function<void()> calls[]{
        [&] { ado::Connection::open(desk->address()); },
        [&] { desk->Execute(QStringLiteral("DELETE FROM t_HospSetup")); },
        [&] { desk->read(QStringLiteral("SELECT 1")); },
        [&] { desk->BeginTrans(); },
        [&] { desk->CommitTrans(); },
        [&] { desk->RollbackTrans(); },
        [&] { Recordset().Open(rows.source(), desk, CursorType::Static, LockType::ReadOnly); },
        [&] { rows.value("HS_KEY"); },
        [&] { rows.setValue("HS_Value", 1); },
        [&] { rows.AddNew(); },
        [&] { rows.Delete(); },
        [&] { rows.MoveNext(); },
        [&] { rows.Requery(); },
        [&] { rows.Close(); },
    };
    for (const std::function<void()> &call : calls) {
        std::optional<ErrorNumber> error;
        std::thread([&] { error = errorOf(call); }).join();
        EXPECT_EQ(error, ErrorNumber::InvalidCall) << &call - calls;
    }
    EXPECT_TRUE(desk->inTransaction() && rows.isOpen() && rows.currentRow() == 0);
    EXPECT_EQ(clinic.rows("SELECT HS_KEY FROM t_HospSetup"), QStringList("a"));
}
