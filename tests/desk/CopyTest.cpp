#include "desk/check/JournalExamination.h"
#include "desk/copy/CopyClinic.h"
#include "desk/journal/Seal.h"
#include "desk/sample/Clinic.h"
#include "desk/schema/Schema.h"
#include "desk/schema/Upgrade.h"
#include "tests/desk/Content.h"
#include "tests/support/Cases.h"
#include "tests/support/Refusal.h"
#include "tests/support/Statements.h"

#include <gmock/gmock.h>

#include <QDir>

using namespace std::chrono_literals;

namespace {

/// Every row as the engine has it, but that one of them knows no negative zero.
std::string content(ado::Connection &clinic)
{
    QStringList lines;
    QStringList tables;
    if (schema::hasJournal(clinic))
        tables << QStringLiteral("t_DeskJournal WHERE DJ_Action <> 'B'");
    for (const schema::TablePlan &table : schema::tablePlans())
        tables << QString::fromLatin1(table.name);
    for (const QString &table : tables) {
        const QString key = table.startsWith("t_DeskJournal") ? "DJ_PK" : "1";
        const ado::CellTable cells = clinic.read(QStringLiteral("SELECT * FROM %1 ORDER BY %2").arg(table, key));
        for (int row = 0; row < cells.rowCount(); ++row) {
            lines << table;
            for (int column = table.startsWith("t_DeskJournal") ? 1 : 0; column < cells.columnCount(); ++column) {
                const QVariant value = cells.raw(row, column);
                lines.last() += !value.isValid() ? "|NULL" : value.toString() == "-0" ? "|0" : '|' + value.toString();
            }
        }
    }
    return lines.join(u'\n').toStdString();
}

/// What a check finds of the journal, and what an upgrade would do.
std::string faults(ado::Connection &clinic)
{
    QStringList titles;
    const check::JournalExamination journal(clinic, 0ms);
    for (const check::Finding &finding : journal.findings()) {
        if (finding.violations != 0 || !finding.failure.isEmpty())
            titles << finding.query.title + finding.failure;
    }
    for (const schema::UpgradeStep &step : schema::upgradeSteps(clinic))
        titles << step.what;
    return titles.join(u'\n').toStdString();
}

class Copy : public testing::TestWithParam<ado::Engine>
{
protected:
    Copy()
        : clinic_(GetParam(), false)
    {
        sample::fill(*clinic_.connection(), sample::Size::Small);
    }

    /// An empty place of another engine.
    QString elsewhere()
    {
        if (GetParam() != ado::Engine::SQLite)
            return newFile();
        server_ = std::make_unique<TestDatabase>(ado::Engine::PostgreSQL, false);
        return server_->address();
    }
    QString newFile() const
    {
        return QStringLiteral("sqlite:%1/%2.db").arg(folder_.path()).arg(QDir(folder_.path()).count());
    }
    bool nothingElsewhere()
    {
        if (GetParam() != ado::Engine::SQLite)
            return QDir(folder_.path()).isEmpty();
        return server_->value("SELECT COUNT(*) FROM pg_class WHERE relname LIKE 'tps%'") == "0";
    }

    TestDatabase clinic_;
    std::unique_ptr<TestDatabase> server_;
    const QTemporaryDir folder_;
};
INSTANTIATE_TEST_SUITE_P(Engines, Copy, testing::ValuesIn(allEngines), engineName);

} // namespace

TEST_P(Copy, GoesToAnotherEngineAndBackAsItWas)
{
    journal::attend(*clinic_.connection());
    for (const QString &statement : statementsOf("desk/awkward.sql"))
        clinic_.connection()->Execute(statement);
    const ado::ConnectionPtr source = clinic_.otherDesk();
    const std::string before = content(*source);
    const QString away = elsewhere();
    int told = 0;
    copy::copyClinic(*source, away, [&](qint64 done, qint64 total) {
        if (told++ == 0) // a desk that works on meanwhile
            clinic_.run("UPDATE Customer SET address = '이사' WHERE Customer_PK = 1");
        return done <= total;
    });
    EXPECT_GT(told, 1);
    clinic_.run("UPDATE Customer SET address = '또 이사' WHERE Customer_PK = 1");

    const ado::ConnectionPtr there = ado::Connection::open(away);
    std::unique_ptr<TestDatabase> home;
    QString back = newFile();
    if (GetParam() != ado::Engine::SQLite) {
        home = std::make_unique<TestDatabase>(GetParam(), false);
        back = home->address();
    }
    copy::copyClinic(*there, back);
    const ado::ConnectionPtr again = ado::Connection::open(back);
    EXPECT_EQ(content(*again), before);
    for (const ado::ConnectionPtr &copy : {there, again}) {
        EXPECT_EQ(faults(*copy), "");
        journal::attend(*copy);
        copy->Execute("INSERT INTO tPSOrderMaster (Cust_PK, OrdM_Date) VALUES (1, '2026-11-25')");
        EXPECT_EQ(copy->read("SELECT MAX(OrdM_PK) FROM tPSOrderMaster").raw(0, 0).toString(), "322")
            << "321 was given before";
        copy->Execute("DELETE FROM tPSOrderMaster WHERE OrdM_PK = 322");
        EXPECT_EQ(faults(*copy), "");
    }
}

TEST(CopyOfAServer, TakesTheRightsAlong)
{
    TestDatabase clinic(ado::Engine::PostgreSQL), empty(ado::Engine::PostgreSQL, false);
    clinic.run("CREATE ROLE \"원장\"");
    const std::tuple<const char *, const char *, const char *> rights[]{
        {"SELECT ON tPSTransaction", "has_table_privilege('원장', 'tPSTransaction', 'SELECT')",
         "has_table_privilege('원장', 'tPSTransaction', 'UPDATE')"},
        {"UPDATE (HS_Value) ON t_HospSetup", "has_column_privilege('원장', 't_HospSetup', 'hs_value', 'UPDATE')",
         "has_column_privilege('원장', 't_HospSetup', 'hs_key', 'UPDATE')"},
        {"SELECT ON t_DeskJournal", "has_table_privilege('원장', 't_DeskJournal', 'SELECT')",
         "has_table_privilege('원장', 't_DeskJournal', 'DELETE')"},
        {"USAGE ON SCHEMA clinic_journal", "has_schema_privilege('원장', 'clinic_journal', 'USAGE')",
         "has_schema_privilege('원장', 'clinic_journal', 'CREATE')"}};
    for (const auto &[right, has, hasNot] : rights)
        clinic.run(QStringLiteral("GRANT %1 TO \"원장\"").arg(QLatin1String(right)));
    copy::copyClinic(*clinic.connection(), empty.address());
    for (const auto &[right, has, hasNot] : rights)
        EXPECT_EQ(
            empty.value(QStringLiteral("SELECT %1 AND NOT %2").arg(QString::fromUtf8(has), QString::fromUtf8(hasNot))),
            "true")
            << right;
}

TEST_P(Copy, IsRefusedWholeWhereAValueCannotGoAlong)
{
    for (const QStringList &refused : casesOf("desk/copy-refusals.cases", 3)) {
        if (refused[0].toStdString() != engineName({GetParam(), 0}))
            continue;
        TestDatabase odd(GetParam(), false);
        sample::fill(*odd.connection(), sample::Size::Small);
        for (const QString &statement : refused[1].split(u';'))
            odd.run(statement);
        EXPECT_THAT(refusal([&] { copy::copyClinic(*odd.connection(), elsewhere()); }),
                    testing::HasSubstr(refused[2].toStdString()));
        EXPECT_TRUE(nothingElsewhere()) << refused[1].toStdString();
    }
}

TEST_P(Copy, LeavesNothingWhenItIsStoppedAndAsksForAnEmptyPlace)
{
    const QString away = elsewhere();
    int told = 0;
    EXPECT_THAT(
        refusal([&] { copy::copyClinic(*clinic_.connection(), away, [&](qint64, qint64) { return ++told < 3; }); }),
        testing::HasSubstr("중단"));
    EXPECT_TRUE(nothingElsewhere());
    if (server_)
        server_->run("CREATE VIEW mine AS SELECT 1");
    else
        QFile(away.mid(7)).open(QIODevice::WriteOnly);
    EXPECT_THAT(refusal([&] { copy::copyClinic(*clinic_.connection(), away); }),
                testing::HasSubstr(server_ ? "mine" : away.mid(7).toStdString()));
}

TEST_P(Copy, BeginsAJournalAnewWhoseChainIsBroken)
{
    if (GetParam() == ado::Engine::MariaDB)
        GTEST_SKIP() << "no journal there";
    journal::sealOpen(*clinic_.connection());
    for (const char *past : {"DROP TRIGGER journal_guard_U", "ALTER TABLE t_DeskJournal DISABLE TRIGGER USER"}) {
        if ((*past == 'D') == (GetParam() == ado::Engine::SQLite))
            clinic_.run(past);
    }
    clinic_.run("UPDATE t_DeskJournal SET DJ_Who = 'x' WHERE DJ_Place = 1");
    const QString away = elsewhere();
    EXPECT_EQ(copy::copyClinic(*clinic_.connection(), away).journalLeft, 3);
    EXPECT_EQ(faults(*ado::Connection::open(away)), "");
}
