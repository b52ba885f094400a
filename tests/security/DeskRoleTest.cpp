#include "clinic/Examination.h"
#include "data/clsSQL.h"
#include "desk/journal/Seal.h"
#include "desk/sample/Clinic.h"
#include "desk/schema/Schema.h"
#include "desk/schema/Tables.h"
#include "desk/schema/Version.h"
#include "platform/ado/Recordset.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/RuntimeError.h"
#include "sales/clsFunctions.h"
#include "tests/support/Cases.h"
#include "tests/support/Refusal.h"
#include "tests/support/TestDatabase.h"

#include <QProcess>

#include <gmock/gmock.h>

namespace {

/// A small clinic and a desk that logs in with the role of desk-role.sql.
class DeskRole : public testing::Test
{
protected:
    DeskRole()
        : clinic_(ado::Engine::PostgreSQL, false)
    {
        sample::fill(*clinic_.connection(), sample::Size::Small);
        makeRole();
        const QString address =
            QString(clinic_.address()).replace(QStringLiteral("clinic@"), QStringLiteral("desk_of_test@"));
        desk_ = ado::Connection::open(address);
    }

    void makeRole() { makeRole(clinic_, {"-v", "lock_down=1"}); }
    static void makeRole(const TestDatabase &clinic, const QStringList &options, const QString &path = {})
    {
        QProcess psql;
        psql.setProcessChannelMode(QProcess::MergedChannels);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("PGOPTIONS", path.isEmpty() ? QString() : "-csearch_path=" + path);
        psql.setProcessEnvironment(environment);
        psql.start("psql", QStringList{"-q", "-v", "desk=desk_of_test", "-f", ROLE_SCRIPT} + options
                               + QStringList(clinic.address()));
        if (!psql.waitForFinished() || psql.exitCode() != 0)
            throw std::runtime_error(psql.readAll().toStdString());
    }

    std::string refusalOf(const QString &statement)
    {
        return refusal([&] { desk_->Execute(statement); });
    }

    TestDatabase clinic_;
    ado::ConnectionPtr desk_;
};

} // namespace

TEST_F(DeskRole, DoesADesksWork)
{
    makeRole(); // a second time does no harm
    EXPECT_TRUE(schema::hasSchema(*desk_));
    EXPECT_EQ(schema::readMark(*desk_).value_or(schema::Mark{}).version, schema::CurrentVersion);
    ado::Recordset orders;
    orders.Open(clsSQL().getOrderMasterSQL(1), desk_, ado::CursorType::Keyset, ado::LockType::Optimistic);
    desk_->BeginTrans();
    orders.AddNew();
    orders.setValue("Cust_PK", 1);
    orders.setValue("OrdM_Date", QDate(2026, 11, 24));
    orders.Update();
    desk_->CommitTrans();
    desk_->Execute(clsSQL().insDB2OrderDetailSQL(321, 1, runtime::Currency::fromWon(1'000), {}, 2, 0));
    EXPECT_EQ(clsFunctions().reCalculateOMTotal(desk_, 321), 1);
    EXPECT_EQ(clinic_.value("SELECT OrdM_Total FROM tPSOrderMaster WHERE OrdM_PK = 321"), QStringLiteral("2000"));
    desk_->Execute(clsSQL().delCustSaleDetailByOrdMPKSQL(321));
    ado::Recordset mine;
    mine.Open(QStringLiteral("SELECT COUNT(*) AS found FROM t_DeskJournal WHERE DJ_Who LIKE 'desk_of_test%'"), desk_,
              ado::CursorType::Static, ado::LockType::ReadOnly);
    EXPECT_EQ(runtime::CLng(mine[QStringLiteral("found")]), 4); // order, line, sums, no line again
    EXPECT_GT(journal::sealSome(*desk_), 0);
    desk_->Execute("INSERT INTO tPSProperties (tpsps_Key, tpsps_Value) VALUES ('새', '')");
    desk_->Execute("UPDATE t_HospSetup SET HS_Value = 'x'");
    const QString like = QStringLiteral("SELECT COUNT(*) AS found FROM tPSOrderDetail WHERE OrdD_RfndMemo LIKE '[▶]%'");
    for (const ado::ConnectionPtr &connection : {desk_, clinic_.connection()}) {
        ado::Recordset rows;
        rows.Open(like, connection, ado::CursorType::Static, ado::LockType::ReadOnly);
        EXPECT_GT(runtime::CLng(rows[QStringLiteral("found")]), 4);
    }
}

TEST_F(DeskRole, MayNothingElse)
{
    clinic_.run("CREATE SCHEMA treatment");
    clinic_.run("CREATE TABLE treatment.record (note text)");
    clinic_.run("CREATE TABLE payroll (note text)");
    for (const QStringList &statement : casesOf("security/refused.cases", 1))
        EXPECT_THAT(refusalOf(statement[0]), testing::Not(testing::IsEmpty())) << statement[0].toStdString();
}

/// The journal is written as its owner, so nothing in it may be taken from a schema of the desk's.
TEST_F(DeskRole, TurnsNothingThatTheJournalIsWrittenWith)
{
    for (const char *statement :
         {"CREATE SCHEMA own AUTHORIZATION desk_of_test", "CREATE TABLE own.seen (who name)",
          "GRANT INSERT, SELECT ON own.seen TO PUBLIC",
          "CREATE FUNCTION own.two(text, text) RETURNS boolean LANGUAGE sql AS 'INSERT INTO own.seen VALUES "
          "(current_user); SELECT true'",
          "CREATE FUNCTION own.joined(text, text) RETURNS text LANGUAGE sql AS 'INSERT INTO own.seen VALUES "
          "(current_user); SELECT $1'",
          "CREATE OPERATOR own.= (FUNCTION = own.two, LEFTARG = text, RIGHTARG = text)",
          "CREATE OPERATOR own.<> (FUNCTION = own.two, LEFTARG = text, RIGHTARG = text)",
          "CREATE OPERATOR own.|| (FUNCTION = own.joined, LEFTARG = text, RIGHTARG = text)",
          "CREATE FUNCTION own.to_char(timestamp, text) RETURNS text LANGUAGE sql AS 'SELECT own.joined($2, $2)'",
          "CREATE FUNCTION own.host(inet) RETURNS text LANGUAGE sql AS 'SELECT own.joined(''x'', ''x'')'",
          "CREATE DOMAIN own.text AS pg_catalog.text CHECK (own.two(VALUE, VALUE))"})
        clinic_.run(QLatin1String(statement));
    desk_->Execute("SET search_path = own, public, pg_catalog");
    const QString rows = QStringLiteral("SELECT COUNT(*) FROM t_DeskJournal");
    const int before = clinic_.value(rows).toInt();
    desk_->Execute(
        "INSERT INTO public.tPSOrderDetail (OrdM_PK, PM_PK, OrdD_UnitPrice, OrdD_Count) VALUES (320, 1, 5, 1)");
    desk_->Execute("UPDATE public.tPSOrderMaster SET OrdM_Total = 5 WHERE OrdM_PK = 320");
    desk_->Execute("DELETE FROM public.tPSOrderDetail WHERE OrdM_PK = 320 AND OrdD_UnitPrice = 5");
    EXPECT_EQ(clinic_.value(rows).toInt(), before + 3);
    EXPECT_EQ(clinic_.value("SELECT COUNT(*) FROM own.seen"), QStringLiteral("0"));
}

/// Another owner, another schema, counters of the old kind, nothing of this program's own; and another program beside it.
TEST_F(DeskRole, WorksOnTablesThatAnotherMadeAndLeavesTheRestAsItIs)
{
    TestDatabase theirs(ado::Engine::PostgreSQL, false);
    for (const char *statement : {"CREATE ROLE clinic_maker", "CREATE SCHEMA shop AUTHORIZATION clinic_maker",
                                  "CREATE TABLE public.payroll (note text)", "GRANT SELECT ON public.payroll TO PUBLIC",
                                  "SET search_path = shop", "SET ROLE clinic_maker"})
        theirs.run(QLatin1String(statement));
    for (const schema::TablePlan &table : schema::tablePlans())
        theirs.run(schema::createTableStatement(table, schema::Dialect::PostgreSQL)
                       .replace("integer GENERATED BY DEFAULT AS IDENTITY", "serial"));
    theirs.run("RESET ROLE");
    makeRole(theirs, {}, "shop");
    const ado::ConnectionPtr desk = ado::Connection::open(QString(theirs.address()).replace("clinic@", "desk_of_test@")
                                                          + "&options=-csearch_path%3Dshop");
    EXPECT_EQ(clinic::textsOf(clinic::examine(*desk, clinic::Depth::ToSell), clinic::Finding::Weight::Fault),
              QStringList());
    ado::Recordset orders;
    orders.Open(clsSQL().getOrderMasterSQL(1), desk, ado::CursorType::Keyset, ado::LockType::Optimistic);
    orders.AddNew();
    orders.setValue("Cust_PK", 1);
    orders.setValue("OrdM_Date", QDate(2026, 11, 24));
    orders.Update();
    orders.Delete();
    desk->Execute("INSERT INTO tPSProperties (tpsps_Key, tpsps_Value) VALUES ('새', '')");
    for (const char *refused : {"INSERT INTO tPSOrderMaster (OrdM_PK, Cust_PK, OrdM_Date) VALUES (9, 1, '2026-11-24')",
                                "DELETE FROM Customer", "CREATE TABLE shop.mine (x integer)"})
        EXPECT_THAT(refusal([&] { desk->Execute(QLatin1String(refused)); }), testing::Not(testing::IsEmpty()))
            << refused;
    EXPECT_EQ(theirs.value("SELECT (has_database_privilege('public', current_database(), 'CONNECT, TEMP') AND "
                           "has_table_privilege('public', 'public.payroll', 'SELECT'))::int"),
              "1");
    theirs.run("DROP OWNED BY clinic_maker CASCADE");
    theirs.run("DROP ROLE clinic_maker");
}

TEST_F(DeskRole, StaysLockedOutWhenItsRightsAreGivenAnew)
{
    clinic_.run("ALTER ROLE desk_of_test NOLOGIN");
    makeRole();
    EXPECT_THROW(ado::Connection::open(desk_->address()), runtime::RuntimeError);
    clinic_.run("ALTER ROLE desk_of_test LOGIN"); // the role is the server's, for the next test
}

TEST_F(DeskRole, CanStillLearnNamesAndUseUpKeys)
{
    clinic_.run("CREATE TABLE payroll (note text)");
    const auto first = [this](const char *statement) {
        return desk_->read(QString::fromLatin1(statement)).raw(0, 0).toString();
    };
    EXPECT_EQ(first("SELECT relname FROM pg_class WHERE relname = 'payroll'"), "payroll");
    EXPECT_EQ(first("SELECT n::regclass FROM generate_series(16384, 99999) n WHERE n::regclass::text = 'payroll'"),
              "payroll");
    const QString add = QStringLiteral("INSERT INTO tPSCompanyMaster (CM_Name) VALUES ('x') RETURNING CM_PK");
    const int key = desk_->read(add).raw(0, 0).toInt();
    desk_->BeginTrans();
    desk_->Execute(QString(add).remove(" RETURNING CM_PK"));
    desk_->RollbackTrans();
    EXPECT_EQ(desk_->read(add).raw(0, 0).toInt(), key + 2);
}

TEST_F(DeskRole, CanStillDisturbTheOtherDesks)
{
    const ado::ConnectionPtr other = ado::Connection::open(desk_->address());
    ado::Recordset session;
    session.Open(QStringLiteral("SELECT pg_backend_pid() AS pid"), other, ado::CursorType::Static,
                 ado::LockType::ReadOnly);
    const QString attack = QStringLiteral("' OR pg_terminate_backend(%1, 5000) AND '' = '")
                               .arg(runtime::CLng(session[QStringLiteral("pid")]));
    ado::Recordset rows;
    rows.Open(clsSQL().getNumOfSameProdName(attack), desk_, ado::CursorType::Static, ado::LockType::ReadOnly);
    EXPECT_EQ(clinic_.value("SELECT COUNT(*) FROM pg_stat_activity WHERE usename = 'desk_of_test'"),
              QStringLiteral("1"));
}
