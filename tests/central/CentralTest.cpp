#include "components/central/clsZelvoCentral.h"
#include "desk/backup/Backup.h"
#include "platform/runtime/RuntimeError.h"
#include "tests/support/Cases.h"
#include "tests/support/Refusal.h"
#include "tests/support/SilentServer.h"
#include "tests/support/TestDatabase.h"
#include "tests/support/Wire.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QProcess>
#include <QTimer>

#include <gmock/gmock.h>

#include <functional>

namespace {

/// A head office with two products.
class Office
{
public:
    explicit Office(ado::Engine engine)
        : database(engine)
    {
        run("INSERT INTO tPSProductMaster (PM_Catagory, PM_Name, PM_UnitPrice, PM_IsValid) VALUES ('차', '쌍화차', "
            "5000, 1), "
            "('환', '경옥고', 38000, 1)");
        ado::ConnectionPtr connection = database.connection();
        clsZelvoCentral().MakeHeadOffice(connection);
    }
    void run(const QString &statements)
    {
        for (const QString &statement : statements.split(u'\n', Qt::SkipEmptyParts))
            database.run(statement);
    }

    TestDatabase database;
};

/// A clinic that follows the office at that address, by that connection of its own.
class Clinic
{
public:
    explicit Clinic(ado::Engine engine)
        : database(engine)
        , connection(database.connection())
    {
    }
    void follow(const QString &address)
    {
        database.run(QStringLiteral("DELETE FROM t_HospSetup WHERE HS_KEY = '물품판매중앙주소'"));
        database.run(QStringLiteral("INSERT INTO t_HospSetup (HS_KEY, HS_Value) VALUES ('물품판매중앙주소', '%1')")
                         .arg(address));
    }
    int check()
    {
        clsZelvoCentral server;
        server.UseClinic(connection);
        return server.CheckSync();
    }
    bool resync()
    {
        clsZelvoCentral server;
        server.UseClinic(connection);
        return server.ResyncFromServer();
    }
    std::string list()
    {
        return database
            .rows(QStringLiteral("SELECT PM_PK, PM_Catagory, PM_Name, PM_UnitPrice, PM_IsValid, PM_IsHide FROM "
                                 "tPSProductMaster ORDER BY PM_PK"))
            .join(QStringLiteral(" / "))
            .toStdString();
    }

    TestDatabase database;
    ado::ConnectionPtr connection;
};

class Chain : public testing::TestWithParam<ado::Engine>
{
};

class HeadOffice : public testing::TestWithParam<ado::Engine>
{
};

} // namespace

TEST_P(Chain, AClinicFollowsItsHeadOffice)
{
    Office office(GetParam() == ado::Engine::SQLite ? ado::Engine::SQLite : ado::Engine::PostgreSQL);
    Clinic clinic(GetParam());
    clinic.database.run(
        "INSERT INTO tPSProductMaster (PM_Catagory, PM_Name, PM_UnitPrice, PM_IsValid, PM_IsHide) VALUES "
        "('기타', '지역 꿀', 12000, 1, NULL), ('환', '경옥고', 36000, 0, 1)");
    clinic.follow(office.database.address());
    for (const QStringList &step : casesOf("central/follow.cases", 5)) {
        SCOPED_TRACE(step[0].toStdString());
        office.run(step[1]);
        if (!step[2].isEmpty())
            clinic.database.run(step[2]);
        EXPECT_EQ(clinic.check(), step[3].toInt());
        EXPECT_TRUE(clinic.resync());
        EXPECT_EQ(clinic.list(), step[4].toStdString());
        EXPECT_EQ(clinic.check(), 1);
    }
}

TEST_P(Chain, NeitherSavesNorUndoesWhatTheHostBegan)
{
    Office office(GetParam() == ado::Engine::SQLite ? ado::Engine::SQLite : ado::Engine::PostgreSQL);
    Clinic clinic(GetParam());
    clinic.follow(office.database.address());
    const QString hers = QStringLiteral("INSERT INTO tPSCompanyMaster (CM_Name) VALUES ('동의상사')");
    clinic.connection->BeginTrans();
    clinic.connection->Execute(hers);
    EXPECT_TRUE(clinic.resync());
    clinic.connection->RollbackTrans();
    EXPECT_EQ(clinic.list(), "");
    EXPECT_EQ(clinic.database.value("SELECT COUNT(*) FROM tPSCompanyMaster"), "0");

    clinic.database.run(
        "CREATE UNIQUE INDEX one_of_a_kind ON tPSProductMaster (PM_IsValid)"); // refuses the second product
    clinic.connection->BeginTrans();
    clinic.connection->Execute(hers);
    EXPECT_FALSE(clinic.resync());
    clinic.connection->CommitTrans();
    EXPECT_EQ(clinic.list(), "");
    EXPECT_EQ(clinic.database.value("SELECT COUNT(*) FROM tPSCompanyMaster"), "1");
}

TEST_P(HeadOffice, BacksItsListUp)
{
    Office office(GetParam());
    const QTemporaryDir folder;
    const QString file = folder.filePath("office.backup");
    backup::backUp(office.database.address(), file);
    TestDatabase empty(GetParam(), false);
    const QString address =
        GetParam() == ado::Engine::SQLite ? "sqlite:" + folder.filePath("again.db") : empty.address();
    backup::restore(address, file);
    const ado::ConnectionPtr restored = ado::Connection::open(address);
    Clinic clinic(ado::Engine::SQLite);
    clinic.follow(office.database.address());
    office.run(
        "UPDATE tPSProductMaster SET PM_UnitPrice = 7000, PM_Name = '쌍화탕' WHERE PM_PK = 1"); // lost with the machine
    ASSERT_TRUE(clinic.resync());
    clinic.follow(address);
    restored->Execute(QStringLiteral("UPDATE tPSProductMaster SET PM_UnitPrice = 1 WHERE PM_PK = 2"));
    EXPECT_EQ(clinic.check(), 0) << "though it has counted as far as the lost one";
    ASSERT_TRUE(clinic.resync());
    EXPECT_EQ(clinic.list(), "1|차|쌍화차|5000|1|NULL / 2|환|경옥고|1|1|NULL") << "under their keys";
    EXPECT_EQ(clinic.check(), 1);
    restored->Execute(QStringLiteral("UPDATE tPSProductMaster SET PM_UnitPrice = 2 WHERE PM_PK = 2"));
    EXPECT_EQ(clinic.check(), 0) << "it goes on counting";
}

TEST(HeadOfficeOnAServer, ListsAProductThatSomebodyAddsMeanwhile)
{
    TestDatabase database(ado::Engine::PostgreSQL);
    QProcess editor;
    editor.start(QStringLiteral("psql"),
                 {"-q", "-c", "INSERT INTO tPSProductMaster (PM_Name) VALUES ('쌍화차'); SELECT pg_sleep(1)",
                  database.address()});
    const QString held = QStringLiteral("SELECT COUNT(*) FROM pg_locks WHERE relation = 'tpsproductmaster'::regclass");
    while (database.value(held) == "0")
        ASSERT_FALSE(editor.waitForFinished(10)) << editor.readAllStandardError().toStdString();
    ado::ConnectionPtr connection = database.connection();
    clsZelvoCentral().MakeHeadOffice(connection);
    editor.waitForFinished();
    EXPECT_EQ(database.value("SELECT COUNT(*) FROM t_CentralProduct"), "1");
}

INSTANTIATE_TEST_SUITE_P(Engines, Chain,
                         testing::Values(ado::Engine::SQLite, ado::Engine::PostgreSQL, ado::Engine::Odbc), engineName);
INSTANTIATE_TEST_SUITE_P(Engines, HeadOffice, testing::Values(ado::Engine::SQLite, ado::Engine::PostgreSQL),
                         engineName);

TEST(Link, LeavesTheOldListOrTheNewOneWhereverItIsCut)
{
    Office office(ado::Engine::PostgreSQL);
    Wire toOffice, toClinic;
    Clinic near(ado::Engine::PostgreSQL), far(ado::Engine::SQLite);
    near.connection = ado::Connection::open(toClinic.address(near.database.serverDatabase()));
    for (Clinic *clinic : {&near, &far}) {
        clinic->follow(toOffice.address(office.database.serverDatabase()));
        ASSERT_TRUE(clinic->resync());
    }
    struct Cut
    {
        const char *what;
        Wire *wire;
        Clinic *clinic;
        bool everything; ///< each statement; otherwise those that write
        int cuts = 0;
    } cuts[] = {{"to the office, of the far clinic", &toOffice, &far, true},
                {"to the office, of the near clinic", &toOffice, &near, true},
                {"to the clinic's own server", &toClinic, &near, false}};
    int price = 100;
    for (Cut &cut : cuts) {
        for (const auto moment : {Wire::Moment::Before, Wire::Moment::Unanswered}) {
            for (int statement = 0;; ++statement) {
                SCOPED_TRACE(testing::Message() << cut.what << ", at " << statement << ", moment " << int(moment));
                office.run(QStringLiteral("UPDATE tPSProductMaster SET PM_UnitPrice = %1\nINSERT INTO tPSProductMaster "
                                          "(PM_Name, PM_IsValid) VALUES ('새 물품 %1', 1)")
                               .arg(++price));
                const std::string before = cut.clinic->list();
                cut.wire->cutAt(statement, moment, cut.everything);
                const bool told = cut.clinic->resync();
                const bool happened = cut.wire->wasCut();
                cut.wire->mend();
                const std::string after = cut.clinic->list();
                EXPECT_TRUE(cut.clinic->resync());
                const std::string whole = cut.clinic->list();
                EXPECT_NE(before, whole);
                EXPECT_THAT(after, testing::AnyOf(before, whole));
                EXPECT_TRUE(!told || after == whole);
                EXPECT_EQ(cut.clinic->check(), 1);
                if (!happened)
                    break;
                ++cut.cuts;
            }
        }
        EXPECT_GE(cut.cuts, 4) << cut.what;
    }
    EXPECT_TRUE(near.resync());
    EXPECT_TRUE(far.resync());
    const QString sold = QStringLiteral("SELECT PM_Name, PM_UnitPrice FROM tPSProductMaster ORDER BY PM_Name");
    EXPECT_EQ(near.database.rows(sold), far.database.rows(sold));
    EXPECT_EQ(near.database.rows(sold), office.database.rows(sold));
}

TEST(Link, TellsOfAServerThatHangsWithinFiveSeconds)
{
    Office office(ado::Engine::PostgreSQL);
    const SilentServer silent;
    const struct
    {
        const char *what;
        QString address;
    } cases[] = {
        {"in the greeting", QStringLiteral("postgresql://clinic@127.0.0.1:%1/chain").arg(silent.port())},
        {"in the answer", office.database.address()},
    };
    Clinic clinic(ado::Engine::SQLite);
    const ado::ConnectionPtr editor = office.database.otherDesk();
    editor->BeginTrans();
    editor->Execute(QStringLiteral("LOCK TABLE t_CentralList IN ACCESS EXCLUSIVE MODE"));
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        clinic.follow(c.address);
        QElapsedTimer waited;
        waited.start();
        EXPECT_EQ(clinic.check(), -1);
        EXPECT_LT(waited.elapsed(), 5000);
    }
    editor->RollbackTrans();
    EXPECT_EQ(clinic.check(), 0) << "it answers again";
}

TEST(Link, ShowsThatItWaits)
{
    Office office(ado::Engine::PostgreSQL);
    Clinic clinic(ado::Engine::SQLite);
    clinic.follow(office.database.address());
    const ado::ConnectionPtr editor = office.database.otherDesk();
    editor->BeginTrans();
    editor->Execute(QStringLiteral("LOCK TABLE t_CentralList IN ACCESS EXCLUSIVE MODE"));
    QString shown;
    const QString longest = QStringLiteral("본부의 물품 목록을 가져오는 중입니다. 20,000건");
    const QFont usual = QApplication::font();
    QApplication::setFont({usual.family(), 18});
    QTimer::singleShot(1'000, [&] {
        for (const QWidget *window : QApplication::topLevelWidgets()) {
            if (const auto *state = window->findChild<QLabel *>(QStringLiteral("lblCentralProgress"));
                state && window->isVisible()) {
                shown = state->text();
                EXPECT_GE(state->width(), state->fontMetrics().horizontalAdvance(longest)) << "in large letters, too";
            }
        }
        editor->RollbackTrans();
    });
    EXPECT_TRUE(clinic.resync());
    EXPECT_EQ(shown, QStringLiteral("본부에 연결하는 중입니다."));
    QApplication::setFont(usual);
}

TEST(Link, KnowsProductsAgainWhoseNamesAClinicFillsUpWithBlanks)
{
    Office office(ado::Engine::PostgreSQL);
    Clinic clinic(ado::Engine::PostgreSQL);
    clinic.database.run("ALTER TABLE tPSProductMaster ALTER PM_Name TYPE character(40)");
    clinic.follow(office.database.address());
    EXPECT_TRUE(clinic.resync());
    EXPECT_EQ(clinic.check(), 1);
    office.run("UPDATE tPSProductMaster SET PM_UnitPrice = 1");
    EXPECT_TRUE(clinic.resync());
    EXPECT_EQ(clinic.database.value("SELECT COUNT(*) FROM tPSProductMaster WHERE PM_UnitPrice = 1"), "2");
    EXPECT_EQ(clinic.database.value("SELECT COUNT(*) FROM tPSProductMaster"), "2");
}

TEST(Link, IsRefusedWhereThereIsNoListOrNoClinic)
{
    Office office(ado::Engine::SQLite);
    TestDatabase plain(ado::Engine::SQLite);
    ado::ConnectionPtr clinic = plain.connection(), itself = office.database.connection();
    clsZelvoCentral server;
    EXPECT_THAT(refusal([&] { server.LinkClinic(clinic, plain.address()); }), testing::HasSubstr("desk --head-office"));
    EXPECT_THAT(refusal([&] { server.LinkClinic(itself, plain.address()); }),
                testing::HasSubstr("본부의 데이터베이스입니다"));
    EXPECT_THAT(refusal([&] { server.LinkClinic(clinic, QStringLiteral("sqlite:/nowhere/at/all.db")); }),
                testing::HasSubstr("/nowhere/at/all.db"));
    EXPECT_THAT(refusal([&] { server.LinkClinic(clinic, QStringLiteral("odbc:DSN=office")); }),
                testing::HasSubstr("postgresql://"));
    EXPECT_EQ(plain.value("SELECT COUNT(*) FROM sqlite_master WHERE name LIKE 't_Central%'"), QStringLiteral("0"));
    ado::ConnectionPtr gone;
    server.UseClinic(gone);
    EXPECT_EQ(errorOf([&] { server.CheckSync(); }), runtime::ErrorNumber::ObjectClosed);
}

TEST(Link, IsRefusedByAServerThatCannotFollow)
{
    if (allEngines.back() != ado::Engine::MariaDB)
        GTEST_SKIP() << "not installed";
    TestDatabase mariaDb(ado::Engine::MariaDB);
    Office office(ado::Engine::SQLite);
    ado::ConnectionPtr clinic = mariaDb.connection();
    clsZelvoCentral server;
    server.UseClinic(clinic);
    const std::function<void()> calls[]{[&] { server.CheckSync(); }, [&] { server.ResyncFromServer(); },
                                        [&] { server.LinkClinic(clinic, office.database.address()); },
                                        [&] { server.MakeHeadOffice(clinic); }};
    for (const auto &call : calls)
        EXPECT_THAT(refusal(call), testing::HasSubstr("MariaDB 데이터베이스는"));
}

TEST(Link, ServesADeskThatMayWriteRowsOnly)
{
    Office office(ado::Engine::PostgreSQL);
    Clinic clinic(ado::Engine::PostgreSQL);
    clinic.follow(office.database.address());
    const auto makeRole = [&] {
        return QProcess::execute(QStringLiteral("psql"), {"-q", "-v", "desk=desk_of_chain", "-f",
                                                          SCRIPTS "desk-role.sql", clinic.database.address()});
    };
    ASSERT_EQ(makeRole(), 0); // before there is a link
    ASSERT_TRUE(clinic.resync());
    QString address = clinic.database.address();
    clinic.connection =
        ado::Connection::open(address.replace(QStringLiteral("clinic@"), QStringLiteral("desk_of_chain@")));
    for (const char *when : {"rights that came with the link", "and those that the script gives"}) {
        SCOPED_TRACE(when);
        office.run(
            QStringLiteral("DELETE FROM tPSProductMaster WHERE PM_PK = (SELECT MIN(PM_PK) FROM tPSProductMaster)\n"
                           "INSERT INTO tPSProductMaster (PM_Name, PM_IsValid) VALUES ('%1', 1)")
                .arg(QLatin1String(when)));
        EXPECT_EQ(clinic.check(), 0);
        EXPECT_TRUE(clinic.resync());
        EXPECT_EQ(clinic.check(), 1);
        ASSERT_EQ(makeRole(), 0);
    }
}
