#include "desk/backup/Backup.h"
#include "desk/check/Examination.h"
#include "desk/files/NewFile.h"
#include "desk/sample/Clinic.h"
#include "desk/schema/Upgrade.h"
#include "desk/schema/Version.h"
#include "platform/ado/Recordset.h"
#include "tests/desk/Content.h"
#include "tests/desk/Earlier.h"
#include "tests/support/Cases.h"
#include "tests/support/Refusal.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>

#include <atomic>
#include <ostream>
#include <thread>

using namespace std::chrono_literals;

namespace {

const QString written = QStringLiteral("SELECT COUNT(*) FROM tPSOrderMaster WHERE OrdM_ETCMemo = 'written'");

/// A desk that sells as fast as it can: an order and its line, then the order's total in a step of its own.
class BusyDesk
{
public:
    explicit BusyDesk(const QString &like)
        : desk_([this, like] { sell(like); })
    {
    }
    ~BusyDesk() { stop(); }

    void stop()
    {
        stopped_ = true;
        if (desk_.joinable())
            desk_.join();
    }
    int sales() const { return sales_; }
    void waitForMore(int more) const
    {
        for (const int until = sales_ + more; sales_ < until && !stopped_;)
            std::this_thread::sleep_for(1ms);
    }

private:
    void sell(const QString &like)
    {
        const QString name = like + QStringLiteral("-busy");
        {
            QSqlDatabase database = QSqlDatabase::cloneDatabase(like, name);
            database.open();
            QSqlQuery query(database);
            while (!stopped_) {
                database.transaction();
                const int key = 100'000 + sales_;
                bool fine = query.exec(QStringLiteral("INSERT INTO tPSOrderMaster (OrdM_PK, Cust_PK, OrdM_Date, "
                                                      "OrdM_ETCMemo) VALUES (%1, 1, '2026-11-24', 'written')")
                                           .arg(key));
                fine =
                    query.exec(
                        QStringLiteral(
                            "INSERT INTO tPSOrderDetail (OrdM_PK, PM_PK, OrdD_UnitPrice, OrdD_HalinUnit, OrdD_Count) "
                            "SELECT %1, MIN(PM_PK), 700, 0, 1 FROM tPSProductMaster WHERE PM_IsTaxed = 1")
                            .arg(key))
                    && fine;
                fine = database.commit() && fine;
                std::this_thread::sleep_for(5ms);
                database.transaction();
                fine = query.exec(QStringLiteral("UPDATE tPSOrderMaster SET OrdM_Total = 700, OrdM_TaxTotal = 700 "
                                                 "WHERE OrdM_PK = %1")
                                      .arg(key))
                       && fine;
                EXPECT_TRUE(database.commit() && fine) << query.lastError().text().toStdString();
                ++sales_;
            }
        }
        QSqlDatabase::removeDatabase(name);
    }

    std::atomic<bool> stopped_ = false;
    std::atomic<int> sales_ = 0;
    std::thread desk_;
};

class Backup : public testing::TestWithParam<ado::Engine>
{
protected:
    Backup()
        : clinic_(GetParam(), false)
    {
        sample::fill(*clinic_.connection(), sample::Size::Small);
    }

    QString file(const char *name) const { return folder_.filePath(QString::fromLatin1(name)); }
    QStringList files() const { return QDir(folder_.path()).entryList(QDir::Files); }
    void write(const char *name, const QByteArray &bytes) const
    {
        QFile made(file(name));
        ASSERT_TRUE(made.open(QIODevice::WriteOnly) && made.write(bytes) == bytes.size());
    }
    QByteArray read(const char *name) const
    {
        QFile kept(file(name));
        EXPECT_TRUE(kept.open(QIODevice::ReadOnly));
        return kept.readAll();
    }
    TestDatabase clinic_;
    const QTemporaryDir folder_;
};

/// What anybody but its owner may do with a file.
QFile::Permissions::Int forOthers(const QString &name)
{
    return (QFile::permissions(name) & files::NewFile::AsUsual & ~files::NewFile::Private).toInt();
}

std::string joined(const QStringList &lines)
{
    return lines.join(u'\n').toStdString();
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Engines, Backup, testing::Values(ado::Engine::SQLite, ado::Engine::PostgreSQL), engineName);

TEST_P(Backup, IsTheClinicAtOneMomentWhileADeskSells)
{
    // Large enough for several steps of the copying.
    clinic_.run(QStringLiteral("INSERT INTO tPSProperties (tpsps_Key, tpsps_Value) VALUES ('large', '%1')")
                    .arg(QString(9'000'000, u'x')));
    BusyDesk desk(clinic_.plainName());
    desk.waitForMore(5);
    int told = 0;
    backup::backUp(clinic_.address(), file("busy.backup"), [&](qint64, qint64) {
        desk.waitForMore(++told < 4 ? 3 : 0);
        return true;
    });
    desk.stop();
    EXPECT_GE(told, 4);
    EXPECT_EQ(files(), QStringList{QStringLiteral("busy.backup")});

    TestDatabase elsewhere(GetParam(), false);
    backup::restore(elsewhere.address(), file("busy.backup"));
    const int sold = elsewhere.value(written).toInt();
    EXPECT_GE(sold, 5);
    EXPECT_LT(sold, desk.sales()); // the desk was not held up
    const ado::ConnectionPtr restored = ado::Connection::open(elsewhere.address());
    for (const check::Query &query : check::queries())
        EXPECT_EQ(check::examine(*restored, query, 0ms).violations, 0) << query.title.toStdString();
    EXPECT_EQ(check::examineFile(*restored).violations, 0);
}

TEST_P(Backup, ComesBackUnderOpenDesksAndKeepsWhatWasThere)
{
    const QStringList before = contentOf(clinic_);
    backup::backUp(clinic_.address(), file("good.backup"));
    ado::Recordset orders;
    orders.Open(QStringLiteral("SELECT * FROM tPSOrderMaster WHERE OrdM_PK = 1"), clinic_.connection(),
                ado::CursorType::Keyset, ado::LockType::Optimistic);
    for (const char *damage : {"DELETE FROM tPSOrderDetail", "DELETE FROM tPSOrderMaster WHERE OrdM_PK < 300",
                               "UPDATE Customer SET name = '아무개', vip = NULL",
                               "INSERT INTO tPSOrderMaster (Cust_PK, OrdM_Date) VALUES (1, '2026-11-24')"})
        clinic_.run(QString::fromUtf8(damage));
    const QStringList damaged = contentOf(clinic_);

    const QString kept = backup::restore(clinic_.address(), file("good.backup"), {}, backup::Scope::All).safetyCopy;
    EXPECT_EQ(joined(contentOf(clinic_)), joined(before));
    EXPECT_EQ(files().size(), 2) << joined(files());
    orders.Requery(); // the desk that was open all the time
    ASSERT_TRUE(orders.hasCurrent());
    orders.setValue("OrdM_ETCMemo", QStringLiteral("고침"));
    orders.Update();
    clinic_.connection()->Execute("INSERT INTO tPSOrderMaster (Cust_PK, OrdM_Date) VALUES (1, '2026-11-24')");
    // 321 was given before the restore, and may stand in an open window.
    EXPECT_EQ(clinic_.value("SELECT MAX(OrdM_PK) FROM tPSOrderMaster"), QStringLiteral("322"));

    const QString keptNext = backup::restore(clinic_.address(), kept, {}, backup::Scope::All).safetyCopy;
    EXPECT_EQ(joined(contentOf(clinic_)), joined(damaged));
    clinic_.connection()->Execute("INSERT INTO tPSOrderMaster (Cust_PK, OrdM_Date) VALUES (1, '2026-11-24')");
    EXPECT_EQ(clinic_.value("SELECT MAX(OrdM_PK) FROM tPSOrderMaster"), QStringLiteral("323"));
    EXPECT_EQ(clinic_.value("SELECT DS_Generation FROM t_DeskSchema"), QStringLiteral("2"));
    EXPECT_TRUE(QFile::exists(kept) && QFile::exists(keptNext) && kept != keptNext);
}

TEST_P(Backup, KeepsWhatItWritesForItsOwner)
{
    if (GetParam() == ado::Engine::SQLite)
        QFile::setPermissions(clinic_.address().section(u':', 1), files::NewFile::AsUsual);
    backup::backUp(clinic_.address(), file("good.backup"));
    const QString kept = backup::restore(clinic_.address(), file("good.backup")).safetyCopy;
    EXPECT_EQ(forOthers(file("good.backup")), 0);
    EXPECT_EQ(forOthers(kept), 0);
    const QString keptAtOnce = backup::restore(clinic_.address(), file("good.backup")).safetyCopy;
    EXPECT_TRUE(keptAtOnce != kept && QFile::exists(keptAtOnce) && QFile::exists(kept));
    QFile::setPermissions(kept, QFile::ReadOwner);
    EXPECT_EQ(files::privateAs(kept), QFile::ReadOwner);
}

TEST_P(Backup, CallsCommittedWhatIsCommittedWhenStopIsAskedThen)
{
    backup::backUp(clinic_.address(), file("good.backup"));
    const QString changed = QStringLiteral("SELECT COUNT(*) FROM tPSCompanyMaster WHERE CM_Name = '아무개'");
    clinic_.run("UPDATE tPSCompanyMaster SET CM_Name = '아무개'");
    const backup::Progress stopLate = [&](qint64, qint64) { return clinic_.value(changed) != "0"; };
    EXPECT_EQ(refusal([&] { backup::restore(clinic_.address(), file("good.backup"), stopLate); }), "");
    EXPECT_EQ(clinic_.value(changed), "0");
}

TEST_P(Backup, OfAnEarlierProgramComesBackAsAClinicOfThisOne)
{
    TestDatabase earlier(GetParam(), false);
    for (const QString &statement : earlierStatements("1-first", GetParam()))
        earlier.run(statement);
    earlier.run("INSERT INTO Customer (name) VALUES ('김환자')");
    const bool file = GetParam() == ado::Engine::SQLite;
    backup::backUp(earlier.address(), this->file("early.backup"));
    backup::restore(clinic_.address(), this->file("early.backup"), {}, backup::Scope::All);
    EXPECT_EQ(joined(contentOf(clinic_)), joined(contentOf(earlier)));
    EXPECT_TRUE(schema::upgradeSteps(*clinic_.otherDesk()).empty());
    EXPECT_EQ(clinic_.value("SELECT DS_Generation FROM t_DeskSchema"), QStringLiteral("1"));

    // A date that only that program took: where there is no table yet, that is as it was.
    if (file)
        earlier.run("UPDATE Customer SET birth = '1980-02-30'");
    backup::backUp(earlier.address(), this->file("loose.backup"));
    TestDatabase anew(GetParam(), false);
    backup::restore(anew.address(), this->file("loose.backup"));
    EXPECT_EQ(joined(contentOf(anew)), joined(contentOf(earlier)));
    EXPECT_EQ(schema::upgradeNotice(schema::readMark(*anew.otherDesk())).isEmpty(), !file);
    anew.run("UPDATE Customer SET birth = NULL");
    EXPECT_EQ(schema::upgrade(*anew.otherDesk()).empty(), !file);
    EXPECT_TRUE(schema::upgradeSteps(*anew.otherDesk()).empty());
}

TEST_P(Backup, LeavesWhatOtherProgramsKeepAsItIs)
{
    for (const char *theirs :
         {"CREATE TABLE visits (visit integer PRIMARY KEY, patient integer REFERENCES Customer (Customer_PK), product "
          "integer REFERENCES tPSProductMaster (PM_PK) ON DELETE CASCADE)",
          "INSERT INTO visits VALUES (1, 1, 1)", "ALTER TABLE tPSProductMaster ADD COLUMN shelf text",
          "UPDATE tPSProductMaster SET shelf = 'A'"})
        clinic_.run(theirs);
    backup::backUp(clinic_.address(), file("good.backup"));
    for (const char *since :
         {"INSERT INTO visits VALUES (2, 1, 1)", "UPDATE Customer SET name = '새 이름'",
          "UPDATE tPSProductMaster SET shelf = 'B', PM_Name = '새 물품' WHERE PM_PK = 1",
          "DELETE FROM tPSOrderMaster WHERE OrdM_PK = 3", "UPDATE tPSOrderMaster SET OrdM_Total = 1 WHERE OrdM_PK = 4",
          "INSERT INTO tPSProperties (tpsps_Key, tpsps_Value) VALUES ('새 항목', '')"})
        clinic_.run(QString::fromUtf8(since));
    backup::restore(clinic_.address(), file("good.backup"));
    for (const auto &[reading, value] :
         {std::pair("SELECT COUNT(*) FROM visits", "2"),
          std::pair("SELECT COUNT(*) FROM Customer WHERE name <> '새 이름'", "0"),
          std::pair("SELECT COUNT(*) FROM tPSProductMaster WHERE shelf = 'B' OR PM_Name = '새 물품'", "0"),
          std::pair("SELECT COUNT(*) FROM tPSOrderMaster", "320"),
          std::pair("SELECT COUNT(*) FROM tPSProperties WHERE tpsps_Key = '새 항목'", "0"),
          // What the restore changed, and nothing else, stands behind it in the journal.
          std::pair(
              "SELECT COUNT(*) FROM t_DeskJournal WHERE DJ_PK > (SELECT DJ_PK FROM t_DeskJournal WHERE DJ_Action = "
              "'R' AND DJ_New LIKE '%good.backup%')",
              "2")})
        EXPECT_EQ(clinic_.value(QString::fromUtf8(reading)), value) << reading;

    clinic_.run("INSERT INTO tPSProductMaster (PM_PK, PM_Name) VALUES (900, '새 물품')");
    clinic_.run("INSERT INTO visits VALUES (3, 1, 900)");
    const QStringList before = contentOf(clinic_);
    EXPECT_THAT(refusal([&] { backup::restore(clinic_.address(), file("good.backup"), {}, backup::Scope::All); }),
                testing::HasSubstr("visits → tPSProductMaster: 1건"));
    EXPECT_EQ(joined(contentOf(clinic_)), joined(before));
    EXPECT_EQ(clinic_.value("SELECT COUNT(*) FROM visits"), "3");
    clinic_.run("DROP TABLE tPSIncoming");
    EXPECT_THAT(refusal([&] { backup::restore(clinic_.address(), file("good.backup")); }),
                testing::HasSubstr("없는 테이블: tPSIncoming"));
}

TEST_P(Backup, GivesNoKeyAgainThatItGaveBefore)
{
    const char *const sale = "INSERT INTO tPSOrderMaster (Cust_PK, OrdM_Date) VALUES (1, '2026-11-24')";
    clinic_.connection()->Execute(sale);
    clinic_.run("DELETE FROM tPSOrderMaster WHERE OrdM_PK = 321");
    backup::backUp(clinic_.address(), file("good.backup"));
    TestDatabase behind(GetParam(), false);
    sample::fill(*behind.connection(), sample::Size::Small);
    backup::restore(behind.address(), file("good.backup"));
    behind.connection()->Execute(sale);
    EXPECT_EQ(behind.value("SELECT MAX(OrdM_PK) FROM tPSOrderMaster"), "322");
}

TEST_P(Backup, ChangesNothingWhereARowWouldNotComeBackAsItWas)
{
    clinic_.run("UPDATE tPSProductMaster SET PM_UnitPrice = 12345 WHERE PM_PK = 1");
    backup::backUp(clinic_.address(), file("good.backup"));
    clinic_.run("UPDATE tPSProductMaster SET PM_UnitPrice = 12300 WHERE PM_PK < 3");
    clinic_.run(
        GetParam() == ado::Engine::SQLite
            ? "CREATE TRIGGER theirs AFTER UPDATE ON tPSProductMaster WHEN NEW.PM_UnitPrice = 12345 BEGIN UPDATE "
              "tPSProductMaster SET PM_UnitPrice = 12300 WHERE PM_PK = NEW.PM_PK; END"
            : "ALTER TABLE tPSProductMaster ALTER COLUMN PM_UnitPrice TYPE numeric(19,-2)");
    const QStringList before = contentOf(clinic_);
    EXPECT_THAT(refusal([&] { backup::restore(clinic_.address(), file("good.backup")); }),
                testing::HasSubstr("tPSProductMaster\n백업과 다르게 저장된 행"));
    EXPECT_EQ(joined(contentOf(clinic_)), joined(before));
    EXPECT_EQ(clinic_.value("SELECT DS_Generation FROM t_DeskSchema"), "0");
}

TEST_P(Backup, RefusesBeforeAnythingIsTouched)
{
    backup::backUp(clinic_.address(), file("good.backup"));
    const QByteArray good = read("good.backup");
    write("short.backup", good.left(good.size() * 2 / 3));
    write("notes.txt", QByteArray(5'000, 'x'));
    QByteArray torn = good;
    torn.replace(good.size() / 2, 3'000, QByteArray(3'000, '#'));
    write("torn.backup", torn);
    // Of the other engine, and of a database that lacks a column.
    TestDatabase other(GetParam() == ado::Engine::SQLite ? ado::Engine::PostgreSQL : ado::Engine::SQLite);
    backup::backUp(other.address(), file("other.backup"));
    TestDatabase older(GetParam());
    older.run("ALTER TABLE tPSIncoming DROP COLUMN IN_EtcMemo");
    if (GetParam() == ado::Engine::SQLite)
        older.run(QStringLiteral("VACUUM INTO '%1'").arg(file("older.backup")));
    else
        ASSERT_EQ(
            QProcess::execute(QStringLiteral("pg_dump"), {QStringLiteral("-Fc"), QStringLiteral("-f"),
                                                          file("older.backup"), QStringLiteral("-d"), older.address()}),
            0);
    const QStringList before = contentOf(clinic_);
    const QStringList filesBefore = files();

    const auto restoring = [&](const char *name) {
        return refusal([&] { backup::restore(clinic_.address(), file(name)); });
    };
    EXPECT_THAT(restoring("none.backup"), testing::HasSubstr("읽을 수 없습니다"));
    EXPECT_THAT(restoring("notes.txt"), testing::HasSubstr("백업 파일이 아닙니다"));
    EXPECT_THAT(restoring("short.backup"), testing::HasSubstr("손상된"));
    EXPECT_THAT(restoring("torn.backup"), testing::HasSubstr("손상된"));
    EXPECT_THAT(restoring("older.backup"), testing::HasSubstr("한의원"));
    EXPECT_THAT(restoring("other.backup"), testing::HasSubstr("이 주소에 복원할 수 없습니다"));
    EXPECT_THAT(refusal([&] { backup::backUp(older.address(), file("older2.backup")); }),
                testing::HasSubstr("데이터베이스"));
    EXPECT_THAT(refusal([&] { backup::backUp(clinic_.address(), file("good.backup")); }),
                testing::HasSubstr("이미 있는"));
    EXPECT_THAT(refusal([&] { backup::backUp(clinic_.address(), file("no/such/folder")); }),
                testing::Not(testing::IsEmpty()));
    EXPECT_THAT(refusal([&] { backup::backUp(QStringLiteral("odbc:DSN=clinic"), file("x")); }),
                testing::HasSubstr("ODBC"));
    const backup::Progress stop = [](qint64, qint64) { return false; };
    EXPECT_THAT(refusal([&] { backup::backUp(clinic_.address(), file("stopped"), stop); }), testing::HasSubstr("중단"));
    EXPECT_EQ(joined(contentOf(clinic_)), joined(before));
    EXPECT_EQ(joined(files()), joined(filesBefore));
    EXPECT_EQ(read("good.backup"), good);

    EXPECT_THAT(refusal([&] { backup::restore(clinic_.address(), file("good.backup"), stop); }),
                testing::HasSubstr("중단"));
    EXPECT_EQ(joined(contentOf(clinic_)), joined(before));
}

TEST_P(Backup, IsRefusedWhenItsRowsAreNotThoseThatWereBackedUp)
{
    clinic_.run("UPDATE tPSProductMaster SET PM_EtcMemo = 'before' WHERE PM_PK = 1");
    backup::backUp(clinic_.address(), file("good.backup"));
    clinic_.run("UPDATE tPSProductMaster SET PM_EtcMemo = 'after' WHERE PM_PK = 1");
    // A row on a file, the sum on a server: there the rows are packed.
    QByteArray bytes = read("good.backup");
    if (GetParam() == ado::Engine::SQLite)
        bytes.replace("before", "befOre");
    else
        bytes.replace("\nclinic-rows 1\ntpsproductmaster ", "\nclinic-rows 1\ntpsproductmaster 1");
    ASSERT_NE(bytes, read("good.backup"));
    write("other.backup", bytes);
    EXPECT_THAT(refusal([&] { backup::restore(clinic_.address(), file("other.backup")); }),
                testing::HasSubstr("백업한 뒤에 바뀌었거나"));
    EXPECT_EQ(clinic_.value("SELECT PM_EtcMemo FROM tPSProductMaster WHERE PM_PK = 1"), "after");
}

TEST_P(Backup, OfAnotherSchemaIsRefused)
{
    const int engine = GetParam() == ado::Engine::PostgreSQL ? 1 : 0;
    int number = 0;
    for (const QStringList &change : casesOf("desk/other-schemas.cases", 3)) {
        TestDatabase other(GetParam());
        for (const QString &statement : change[engine].split(u'\n'))
            other.run(statement);
        const QString name = file("other") + QString::number(++number);
        const TestDatabase anew(GetParam(), false);
        const std::string told = refusal([&] {
            backup::backUp(other.address(), name);
            backup::restore(anew.address(), name);
        });
        EXPECT_THAT(told, testing::HasSubstr(change[2].toStdString()));
        EXPECT_EQ(told.empty(), change[2].isEmpty()) << told;
    }
}

TEST(BackupOfAFile, LeavesAloneWhatLiesBesideItsNames)
{
    const QTemporaryDir folder;
    const auto path = [&](const char *name) { return folder.filePath(QString::fromLatin1(name)); };
    const QString address = QStringLiteral("sqlite:");
    const auto lay = [&](const char *name) {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("mine") == 4);
    };
    for (const char *name : {"clinic.db.part", "good.backup.part", "other.db.part", "late.db-wal", "later.db-shm"})
        lay(name);
    sample::makeClinic(address + path("clinic.db"), sample::Size::Small);
    backup::backUp(address + path("clinic.db"), path("good.backup"));
    backup::restore(address + path("other.db"), path("good.backup"));
    // What an old log would do to a new file is not tried.
    EXPECT_ANY_THROW(backup::restore(address + path("late.db"), path("good.backup")));
    EXPECT_ANY_THROW(backup::backUp(address + path("clinic.db"), path("later.db")));
    EXPECT_ANY_THROW(sample::makeClinic(address + path("late.db"), sample::Size::Empty));
    const backup::Progress stop = [](qint64, qint64) { return false; };
    EXPECT_ANY_THROW(backup::restore(address + path("stopped.db"), path("good.backup"), stop));

    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).join(u' ').toStdString(),
              "clinic.db clinic.db.part good.backup good.backup.part late.db-wal later.db-shm other.db other.db.part");
    for (const char *name : {"clinic.db.part", "good.backup.part", "other.db.part", "late.db-wal"})
        EXPECT_EQ(QFileInfo(path(name)).size(), 4) << name;
    EXPECT_EQ(forOthers(path("other.db")), 0);
}

TEST(BackupOfAFile, ReplacesADamagedClinicAndMakesAMissingOne)
{
    const QTemporaryDir folder;
    const auto address = [&](const char *name) {
        return QStringLiteral("sqlite:") + folder.filePath(QString::fromLatin1(name));
    };
    sample::makeClinic(address("clinic.db"), sample::Size::Small);
    backup::backUp(address("clinic.db"), folder.filePath("good.backup"));
    {
        QFile clinic(folder.filePath("clinic.db"));
        ASSERT_TRUE(clinic.open(QIODevice::ReadWrite));
        for (int page = 30; page < 45; ++page) {
            clinic.seek(page * 4096);
            clinic.write(QByteArray(4096, '#'));
        }
    }
    EXPECT_EQ(check::examineFile(*ado::Connection::open(address("clinic.db"))).violations > 0, true);
    EXPECT_ANY_THROW(backup::backUp(address("clinic.db"), folder.filePath("bad.backup")));
    const backup::Restored restored = backup::restore(address("clinic.db"), folder.filePath("good.backup"));
    EXPECT_TRUE(QFile::exists(restored.safetyCopy) && restored.wholeFile);
    EXPECT_EQ(backup::restore(address("other.db"), folder.filePath("good.backup")).safetyCopy, QString());
    for (const char *name : {"clinic.db", "other.db"}) {
        const ado::ConnectionPtr clinic = ado::Connection::open(address(name));
        EXPECT_EQ(check::examineFile(*clinic).violations, 0);
        EXPECT_EQ(
            check::examine(*clinic, {{}, {}, QStringLiteral("SELECT OrdM_PK FROM tPSOrderMaster")}, 0ms).violations,
            320);
    }
    EXPECT_ANY_THROW(backup::restore(address("clinic.db"), folder.filePath("clinic.db")));
}
