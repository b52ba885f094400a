#include "desk/backup/Backup.h"
#include "desk/check/JournalExamination.h"
#include "desk/copy/CopyClinic.h"
#include "desk/journal/Chain.h"
#include "desk/journal/Entries.h"
#include "desk/journal/Seal.h"
#include "desk/journal/Sealing.h"
#include "desk/schema/Schema.h"
#include "desk/schema/Upgrade.h"
#include "platform/runtime/RuntimeError.h"
#include "tests/desk/Earlier.h"
#include "tests/support/Cases.h"

#include <QTest>

#include <gmock/gmock.h>

using namespace std::chrono_literals;

namespace {

const char *const LastEntry =
    "SELECT DJ_Action, DJ_Table, DJ_Row, DJ_Order, DJ_Customer FROM t_DeskJournal ORDER BY DJ_PK DESC LIMIT 1";

/// What a technician is told: the titles of what was found, each with its rows.
std::string told(TestDatabase &clinic)
{
    QStringList lines;
    const check::JournalExamination examination(*ado::Connection::open(clinic.address()), 0ms);
    for (const check::Finding &finding : examination.findings()) {
        EXPECT_EQ(finding.failure, QString());
        if (finding.violations > 0)
            lines << finding.query.title + u' ' + finding.firstRows.join(u',').section(QStringLiteral(" · "), 0, 0);
    }
    return lines.join(u';').toStdString();
}

class Journal : public testing::TestWithParam<ado::Engine>
{
protected:
    Journal() { journal::attend(desk()); }

    ado::Connection &desk() { return *clinic.connection(); }

    /// An order, a line, its money; the money again.
    void sell(ado::Connection &desk, int order)
    {
        desk.BeginTrans();
        for (const char *statement :
             {"INSERT INTO tPSOrderMaster (OrdM_PK, Cust_PK, OrdM_Date) VALUES (%1, 1, '2026-11-24')",
              "INSERT INTO tPSOrderDetail (OrdM_PK, PM_PK, OrdD_Count) VALUES (%1, 1, 1)",
              "UPDATE tPSOrderMaster SET OrdM_Total = 38000 WHERE OrdM_PK = %1",
              "INSERT INTO tPSTransaction (tpstrans_OrderM_PK, tpstrans_Money) VALUES (%1, 38000)"})
            desk.Execute(QString::fromLatin1(statement).arg(order));
        desk.CommitTrans();
    }

    /// As somebody who owns the database does it, past the guards.
    static void pastGuards(TestDatabase &clinic, const QString &statement)
    {
        const bool file = clinic.engine() == ado::Engine::SQLite;
        for (const char *table : {"t_DeskJournal", "tPSOrderMaster"}) {
            const QStringList triggers =
                file ? clinic.rows(QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'trigger' AND tbl_name "
                                                  "= '%1'")
                                       .arg(QString::fromLatin1(table)))
                     : QStringList{QString()};
            for (const QString &trigger : triggers)
                clinic.run(file ? QStringLiteral("DROP TRIGGER ") + trigger
                                : QStringLiteral("ALTER TABLE %1 DISABLE TRIGGER USER").arg(QLatin1String(table)));
        }
        clinic.run(statement);
    }

    TestDatabase clinic{GetParam()};
};
INSTANTIATE_TEST_SUITE_P(Engines, Journal,
                         testing::Values(ado::Engine::SQLite, ado::Engine::PostgreSQL, ado::Engine::Odbc), engineName);

} // namespace

TEST_P(Journal, HoldsEachWriteOfADeskAndOfAnotherProgram)
{
    const QList<QStringList> writes = casesOf("desk/journal-writes.cases", 2);
    for (const bool byDesk : {true, false}) {
        for (const QStringList &write : writes) {
            if (byDesk)
                desk().Execute(write[0]);
            else
                clinic.run(write[0]);
            EXPECT_EQ(clinic.value(LastEntry), write[1]) << write[0].toStdString();
        }
    }
    EXPECT_EQ(clinic.value("SELECT COUNT(*) FROM t_DeskJournal WHERE DJ_Action <> 'B'"), "18");
    EXPECT_EQ(clinic.value("SELECT COUNT(*) FROM t_DeskJournal WHERE DJ_Who IS NULL"),
              GetParam() == ado::Engine::SQLite ? "12" : "0");
    EXPECT_EQ(told(clinic), "");
    const QString waiting = clinic.value("SELECT COUNT(*) FROM t_DeskJournal WHERE DJ_Place IS NULL");
    EXPECT_EQ(waiting, "21") << "who writes does not seal, and who looks writes nothing";
    EXPECT_EQ(journal::sealOpen(desk()), 21);
    EXPECT_EQ(clinic.value("SELECT MAX(DJ_Place) FROM t_DeskJournal"), "21");
    const journal::Chain chain = journal::walk(desk());
    EXPECT_EQ(chain.open + chain.brokenAt, 0);
}

TEST_P(Journal, IsSealedByADeskThatWrote)
{
    const auto open = [&] { return clinic.value("SELECT COUNT(*) FROM t_DeskJournal WHERE DJ_Place IS NULL"); };
    const journal::Sealing sealing(clinic.connection(), 20ms);
    EXPECT_TRUE(QTest::qWaitFor([&] { return open() == "0"; })) << "what was left before";
    clinic.run("INSERT INTO tPSOrderMaster (OrdM_PK, Cust_PK, OrdM_Date) VALUES (4, 1, '2026-11-24')");
    QTest::qWait(100);
    EXPECT_EQ(open(), "1") << "a desk that only looks asks for nothing";
    desk().BeginTrans();
    desk().Execute("UPDATE tPSOrderMaster SET OrdM_Total = 1 WHERE OrdM_PK = 4");
    QTest::qWait(100);
    EXPECT_EQ(open(), "1") << "nor within a transaction";
    desk().CommitTrans();
    EXPECT_TRUE(QTest::qWaitFor([&] { return open() == "0"; }));
    EXPECT_EQ(journal::walk(desk()).brokenAt, 0);
}

TEST_P(Journal, TellsWhatSomebodyDidPastIt)
{
    sell(desk(), 5);
    const char *const changes[] = {"UPDATE t_DeskJournal SET DJ_New = 'x' WHERE DJ_Order = 5",
                                   "UPDATE t_DeskJournal SET DJ_Who = 'x' WHERE DJ_Order = 5",
                                   "DELETE FROM t_DeskJournal"};
    for (const bool sealed : {false, true}) {
        for (const char *change : changes)
            EXPECT_ANY_THROW(clinic.run(change)) << change;
        if (!sealed)
            journal::sealOpen(desk());
    }
    if (GetParam() == ado::Engine::Odbc)
        return; // the same server
    for (const QStringList &deed : casesOf("desk/journal-deeds.cases", 2)) {
        TestDatabase one(GetParam());
        journal::attend(*one.connection());
        sell(*one.connection(), 5);
        journal::sealOpen(*one.connection());
        ASSERT_EQ(told(one), "");
        pastGuards(one, deed[0]);
        EXPECT_EQ(told(one), deed[1].toStdString()) << deed[0].toStdString();
    }
}

TEST_P(Journal, GoesWithBackupAndRestoreAndIsMendedByAnUpgrade)
{
    if (GetParam() == ado::Engine::Odbc)
        GTEST_SKIP() << "no backup by this way";
    const QTemporaryDir folder;
    sell(desk(), 5);
    backup::backUp(clinic.address(), folder.filePath("5.backup"));
    sell(desk(), 6);
    backup::restore(clinic.address(), folder.filePath("5.backup"));
    EXPECT_EQ(clinic.value("SELECT MAX(OrdM_PK) FROM tPSOrderMaster"), "5");
    EXPECT_EQ(clinic.value("SELECT COUNT(*) FROM t_DeskJournal WHERE DJ_Order = 6 AND DJ_Action = 'D'"), "3");
    journal::sealOpen(desk());
    EXPECT_EQ(told(clinic), "");
    sell(*clinic.otherDesk(), 7);
    EXPECT_EQ(clinic.value(LastEntry), "I|tPSTransaction|"
                                           + clinic.value("SELECT MAX(tpstrans_PK) FROM "
                                                          "tPSTransaction")
                                           + "|7|NULL");
    EXPECT_EQ(told(clinic), "");

    TestDatabase earlier(GetParam(), false);
    for (const QString &statement : earlierStatements("5-version", GetParam()))
        earlier.run(statement);
    earlier.run("INSERT INTO tPSOrderMaster (OrdM_PK, Cust_PK, OrdM_Date) VALUES (9, 1, '2026-11-24')");
    EXPECT_EQ(told(earlier), "");
    backup::backUp(earlier.address(), folder.filePath("earlier.backup"));
    backup::restore(clinic.address(), folder.filePath("earlier.backup"));
    EXPECT_EQ(clinic.value("SELECT COUNT(*) FROM t_DeskJournal WHERE DJ_Action = 'R'"), "2");
    EXPECT_EQ(told(clinic), "");
    backup::restore(earlier.address(), folder.filePath("5.backup")); // where nothing of a journal is yet
    EXPECT_EQ(told(earlier), "");

    // As it was when whoever wrote sealed, too.
    clinic.run("DROP INDEX IF EXISTS ixJournalOpen");
    if (GetParam() == ado::Engine::SQLite)
        clinic.run("CREATE INDEX ixJournalOpen ON t_DeskJournal (DJ_PK) WHERE DJ_Place IS NULL");
    if (GetParam() == ado::Engine::PostgreSQL)
        clinic.run("CREATE FUNCTION clinic_journal.add() RETURNS int LANGUAGE sql AS 'SELECT 1'");
    pastGuards(clinic, "UPDATE t_DeskSchema SET DS_Version = 2");
    EXPECT_EQ(schema::upgrade(desk()).size(), 1U);
    EXPECT_EQ(schema::upgradeSteps(desk()).size(), 0U);
    EXPECT_ANY_THROW(clinic.run("DELETE FROM t_DeskJournal"));
    sell(desk(), 70);
    EXPECT_EQ(told(clinic), "");

    pastGuards(clinic, "UPDATE t_DeskJournal SET DJ_Who = 'x' WHERE DJ_Place = 5");
    backup::restore(clinic.address(), folder.filePath("5.backup")); // heals no broken chain
    EXPECT_THAT(told(clinic), testing::StartsWith("끊어진 변경 이력 이력번호 5"));
}

TEST(JournalOnAServer, KeepsOneChainWhateverTransactionsDoAtOnce)
{
    TestDatabase clinic(ado::Engine::PostgreSQL);
    const QString order = QStringLiteral("INSERT INTO tPSOrderMaster (OrdM_PK, Cust_PK, OrdM_Date) VALUES (%1, 1, "
                                         "'2026-11-24')");
    ado::Connection &one = *clinic.connection(), &other = *clinic.otherDesk();
    one.BeginTrans();
    one.Execute(order.arg(1));
    other.Execute(order.arg(2));
    EXPECT_EQ(journal::sealSome(other), 4) << "what is written, the first three with the journal's beginning";
    clinic.run("BEGIN");
    clinic.run("SELECT clinic_journal.seal()");
    EXPECT_EQ(journal::sealSome(other), 0) << "while another is at it";
    clinic.run("COMMIT");
    one.CommitTrans(); // the earlier row comes later
    const QTemporaryDir folder;
    const QString file = "sqlite:" + folder.filePath("copy.db");
    copy::copyClinic(one, file); // between the two
    const ado::ConnectionPtr copied = ado::Connection::open(file);
    EXPECT_EQ(journal::walk(*copied).open, 0);
    EXPECT_EQ(journal::entriesOfCustomer(*copied, 1).size(), 2U);
    clinic.run("BEGIN ISOLATION LEVEL REPEATABLE READ"); // sees no end of a chain that went on since
    clinic.run("SELECT 1 FROM t_DeskJournal");
    EXPECT_EQ(journal::sealSome(other), 1);
    EXPECT_EQ(clinic.value("SELECT clinic_journal.seal()"), "0");
    clinic.run("COMMIT");
    const journal::Chain chain = journal::walk(one);
    EXPECT_EQ(chain.brokenAt, 0);
    EXPECT_EQ(chain.last, 5);
    EXPECT_EQ(chain.open, 0);
    EXPECT_EQ(told(clinic), "");
}

TEST(JournalOnAServer, RefusesNoWriteThatItCannotHold)
{
    TestDatabase clinic(ado::Engine::PostgreSQL);
    clinic.run("ALTER TABLE t_DeskJournal RENAME TO gone");
    EXPECT_EQ(clinic.connection()->Execute("INSERT INTO tPSOrderMaster (OrdM_PK, Cust_PK, OrdM_Date) VALUES (5, 1, "
                                           "'2026-11-24')"),
              1);
    clinic.run("ALTER TABLE gone RENAME TO t_DeskJournal");
    EXPECT_EQ(clinic.value("SELECT COUNT(*) FROM tPSOrderMaster"), "1");
    EXPECT_EQ(told(clinic), "변경 이력과 다른 거래 번호 5");
}
