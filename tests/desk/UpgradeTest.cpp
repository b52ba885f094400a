#include "desk/schema/Upgrade.h"
#include "desk/backup/Backup.h"
#include "desk/schema/Schema.h"
#include "desk/schema/Tables.h"
#include "desk/schema/Version.h"
#include "tests/desk/Content.h"
#include "tests/desk/Earlier.h"
#include "tests/support/Refusal.h"

#include <gmock/gmock.h>

#include <QProcess>
#include <QRegularExpression>

namespace {

/// What other programs made beside ours.
void addTheirs(TestDatabase &clinic)
{
    clinic.run("CREATE INDEX theirs ON tPSOrderMaster (OrdM_Tel)");
    clinic.run("CREATE VIEW their_goods AS SELECT PM_PK, PM_AddedDate FROM tPSProductMaster");
    clinic.run("ALTER TABLE Customer ADD COLUMN their_note TEXT");
    if (clinic.engine() == ado::Engine::SQLite)
        clinic.run("CREATE TRIGGER their_trigger AFTER DELETE ON tPSProductMaster BEGIN SELECT 1; END");
}

/// Rows with keys that the database did not give.
void addRows(TestDatabase &clinic)
{
    clinic.run("INSERT INTO tPSProductMaster (PM_PK, PM_Name, PM_AddedDate) VALUES (40, '감초', '2026-02-28')");
    clinic.run("INSERT INTO tPSOrderMaster (OrdM_PK, Cust_PK, OrdM_Date, OrdM_Misugum) VALUES (7, 1, '2026-11-24', 5)");
    clinic.run("INSERT INTO Customer (Customer_PK, name, birth) VALUES (1, '김환자', '1980-01-01')");
}

/// Every definition in the database, as the engine itself tells it.
QStringList definitionsOf(TestDatabase &clinic)
{
    if (clinic.engine() == ado::Engine::SQLite)
        return clinic.rows("SELECT type, name, sql FROM sqlite_master WHERE sql IS NOT NULL ORDER BY name");
    QProcess dump;
    dump.start(QStringLiteral("pg_dump"), {QStringLiteral("--schema-only"), clinic.address()});
    EXPECT_TRUE(dump.waitForFinished() && dump.exitCode() == 0) << dump.readAllStandardError().toStdString();
    return QString::fromUtf8(dump.readAllStandardOutput()).split(u'\n').filter(QRegularExpression("^[^\\\\]"));
}

QStringList settingsOf(TestDatabase &clinic)
{
    if (clinic.engine() == ado::Engine::SQLite)
        return {};
    return clinic.rows("SELECT setconfig::text FROM pg_db_role_setting s JOIN pg_database d ON d.oid = s.setdatabase "
                       "WHERE d.datname = current_database()");
}

struct Earlier
{
    const char *made;
    ado::Engine engine;
};

std::ostream &operator<<(std::ostream &out, const Earlier &earlier)
{
    return out << earlier.made;
}

class Upgrade : public testing::TestWithParam<Earlier>
{
protected:
    Upgrade()
        : clinic_(GetParam().engine, false)
    {
        for (const QString &statement : earlierStatements(GetParam().made, GetParam().engine))
            clinic_.run(statement);
        addTheirs(clinic_);
        addRows(clinic_);
    }

    TestDatabase clinic_;
};

std::vector<Earlier> allEarlier()
{
    std::vector<Earlier> all;
    for (const char *made : {"1-first", "2-reports", "3-planner", "4-outstanding", "5-version"}) {
        all.push_back({made, ado::Engine::SQLite});
        all.push_back({made, ado::Engine::PostgreSQL});
    }
    return all;
}

std::string earlierName(const testing::TestParamInfo<Earlier> &info)
{
    return engineName({info.param.engine, 0}) + std::string(info.param.made).replace(1, 1, "_").insert(0, "_");
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Made, Upgrade, testing::ValuesIn(allEarlier()), earlierName);

TEST_P(Upgrade, MakesOfAnEarlierDatabaseWhatThisProgramMakesAndOnlyOnce)
{
    TestDatabase fresh(GetParam().engine);
    addTheirs(fresh);
    const QStringList content = contentOf(clinic_);
    const QStringList settings = settingsOf(clinic_);
    ado::Connection &desk = *clinic_.otherDesk();
    EXPECT_THAT(schema::upgradeNotice(schema::readMark(desk)).toStdString(), testing::HasSubstr("이전 판"));

    EXPECT_FALSE(schema::upgrade(desk).empty());
    EXPECT_EQ(definitionsOf(clinic_).join(u'\n').toStdString(), definitionsOf(fresh).join(u'\n').toStdString());
    EXPECT_EQ(contentOf(clinic_), content);
    EXPECT_EQ(settingsOf(clinic_), settings);
    EXPECT_EQ(schema::upgradeNotice(schema::readMark(desk)), QString());
    EXPECT_TRUE(schema::upgrade(desk).empty());
    clinic_.run("INSERT INTO tPSProductMaster (PM_Name) VALUES ('당귀')");
    EXPECT_EQ(clinic_.value("SELECT MAX(PM_PK) FROM tPSProductMaster"), "41");
    EXPECT_ANY_THROW(clinic_.run("INSERT INTO tPSProductMaster (PM_AddedDate) VALUES ('2026-02-30')"));
    EXPECT_TRUE(schema::upgrade(*fresh.connection()).empty());
}

TEST_P(Upgrade, LeavesTheDatabaseAsItWasWhenItCannotBeDone)
{
    const bool loose = GetParam().engine == ado::Engine::SQLite && GetParam().made[0] == '1';
    if (loose)
        clinic_.run("INSERT INTO tPSIncoming (IN_Date) VALUES ('2026-02-30')");
    const QStringList definitions = definitionsOf(clinic_);
    const auto stoppedLast = [](qint64 done, qint64 total) { return done + 1 < total; };

    EXPECT_THAT(refusal([&] { schema::upgrade(*clinic_.otherDesk(), stoppedLast); }),
                testing::HasSubstr(loose ? "tPSIncoming.IN_Date 1건" : "중단"));
    EXPECT_EQ(definitionsOf(clinic_), definitions);
}

class NewerClinic : public testing::TestWithParam<ado::Engine>
{
};
INSTANTIATE_TEST_SUITE_P(Engines, NewerClinic, testing::Values(ado::Engine::SQLite, ado::Engine::PostgreSQL),
                         engineName);

TEST_P(NewerClinic, IsLeftAlone)
{
    TestDatabase clinic(GetParam());
    const QTemporaryDir folder;
    const QString file = folder.filePath("good.backup");
    backup::backUp(clinic.address(), file);
    clinic.run("UPDATE t_DeskSchema SET DS_Version = 99");
    const std::string newer = "더 새로운 데스크";
    EXPECT_THAT(refusal([&] { schema::upgrade(*clinic.connection()); }), testing::HasSubstr(newer));
    EXPECT_THAT(refusal([&] { backup::backUp(clinic.address(), file + "2"); }), testing::HasSubstr(newer));
    EXPECT_THAT(refusal([&] { backup::restore(clinic.address(), file); }), testing::HasSubstr(newer));
    EXPECT_EQ(clinic.value("SELECT DS_Version FROM t_DeskSchema"), "99");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 1);
}

/// A clinic whose program made its tables itself.
class TheirClinic : public testing::TestWithParam<ado::Engine>
{
protected:
    TheirClinic()
        : clinic_(GetParam(), false)
    {
        const bool file = GetParam() == ado::Engine::SQLite;
        for (const schema::TablePlan &table : schema::tablePlans()) {
            QString made =
                schema::createTableStatement(table, file ? schema::Dialect::SQLite : schema::Dialect::PostgreSQL);
            made.remove(QRegularExpression("    (IN_PK|tpsps_PK|sex|birth|zipcode|address|phone|cell|vip) .*\n"));
            made.replace(",\n)", "\n)").replace("GENERATED BY DEFAULT AS IDENTITY", "DEFAULT 0").remove(" STRICT");
            clinic_.run(made);
        }
        clinic_.run("CREATE INDEX their_orders ON tPSOrderDetail (OrdM_PK)");
        clinic_.run("INSERT INTO Customer (Customer_PK, name) VALUES (1, '김환자')");
    }

    TestDatabase clinic_;
};
INSTANTIATE_TEST_SUITE_P(Engines, TheirClinic, testing::Values(ado::Engine::SQLite, ado::Engine::PostgreSQL),
                         engineName);

TEST_P(TheirClinic, GetsWhatIsMissingAndNothingElse)
{
    clinic_.run("DROP TABLE tPSIncoming");
    clinic_.run("ALTER TABLE tPSOrderMaster DROP COLUMN OrdM_Cel");
    const QStringList before = definitionsOf(clinic_);
    const auto opened = [&] {
        return GetParam() == ado::Engine::SQLite
                   ? QString()
                   : clinic_.value("SELECT has_database_privilege('public', current_database(), 'CONNECT')::text");
    };
    const QString doors = opened();
    QStringList told;
    for (const schema::UpgradeStep &step : schema::upgrade(*clinic_.otherDesk()))
        told << step.what;
    EXPECT_TRUE(told.contains("테이블 추가: tPSIncoming")) << told.join('\n').toStdString();
    EXPECT_TRUE(told.contains("항목 추가: tPSOrderMaster.OrdM_Cel"));
    EXPECT_FALSE(told.contains("인덱스 추가: ixOrderDetailOrder")) << "theirs does the same";
    EXPECT_TRUE(schema::upgrade(*clinic_.otherDesk()).empty());
    EXPECT_EQ(settingsOf(clinic_), QStringList());
    EXPECT_EQ(opened(), doors);
    EXPECT_TRUE(definitionsOf(clinic_).contains(before.filter("their_orders").value(0)));
    clinic_.run("INSERT INTO tPSIncoming (PM_PK, IN_Count) VALUES (1, 2.5)");
    clinic_.run("INSERT INTO tPSOrderMaster (OrdM_PK, Cust_PK, OrdM_Date) VALUES (9, 1, '2026-11-24')");
    EXPECT_EQ(clinic_.value("SELECT DJ_Order FROM t_DeskJournal WHERE DJ_Action = 'I'"), "9");
}

TEST_P(TheirClinic, IsRefusedByNameWhereAnUpgradeMendsNothing)
{
    clinic_.run("DROP TABLE Receipt");
    clinic_.run(GetParam() == ado::Engine::SQLite ? "ALTER TABLE tPSTransaction RENAME COLUMN tpstrans_PK TO theirs"
                                                  : "ALTER TABLE tPSOrderMaster ALTER COLUMN OrdM_Total TYPE text");
    const QStringList before = definitionsOf(clinic_);
    const std::string told = refusal([&] { schema::upgrade(*clinic_.otherDesk()); });
    EXPECT_THAT(told, testing::HasSubstr("테이블이 없습니다: Receipt"));
    EXPECT_THAT(told,
                testing::HasSubstr(GetParam() == ado::Engine::SQLite ? "항목이 없습니다: tPSTransaction.tpstrans_PK"
                                                                     : "금액이 글자 형식입니다: tPSOrderMaster"));
    EXPECT_EQ(definitionsOf(clinic_), before);
}

TEST(UpgradeOfAServer, LocksTheDoorsOnlyWhenItIsAsked)
{
    TestDatabase clinic(ado::Engine::PostgreSQL);
    const QString open = "SELECT has_database_privilege('public', current_database(), 'CONNECT')::int";
    EXPECT_TRUE(schema::upgrade(*clinic.connection()).empty());
    EXPECT_EQ(clinic.value(open), "1");
    EXPECT_EQ(schema::upgrade(*clinic.connection(), {}, schema::Doors::Locked).size(), 1U);
    EXPECT_EQ(clinic.value(open), "0");
    EXPECT_TRUE(schema::upgrade(*clinic.connection(), {}, schema::Doors::Locked).empty());
}
