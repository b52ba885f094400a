#include "tests/ado/Desks.h"
#include "tests/support/PostgresServer.h"

#include <QUrl>

#include <filesystem>

TEST(Addresses, OfAPostgresServerTakeAPercentEncodedHostAndOptions)
{
    TestDatabase clinic(ado::Engine::PostgreSQL);
    const QString folder = clinic.address().section(QStringLiteral("host="), 1);
    const QString address = QStringLiteral("postgresql://clinic:any%20word@%1:5432/%2?application_name=it's%20a%20desk")
                                .arg(QString::fromUtf8(QUrl::toPercentEncoding(folder)), clinic.serverDatabase());
    const ado::ConnectionPtr desk = ado::Connection::open(address);
    Recordset name;
    name.Open(QStringLiteral("SELECT current_setting('application_name') AS Result"), desk, CursorType::Static,
              LockType::ReadOnly);
    EXPECT_EQ(name.value("Result"), QVariant("it's a desk"));
    EXPECT_EQ(errorOf([&] { ado::Connection::open(address + QStringLiteral("&port=1")); }), ErrorNumber::ConnectionLost);
}

TEST(Addresses, OfAnOdbcSourceNeedNotKnowThePeculiarSettingOfTheServerBehindIt)
{
    TestDatabase clinic(ado::Engine::Odbc);
    const ado::ConnectionPtr desk =
        ado::Connection::open(QString(clinic.address()).remove(QStringLiteral("Protocol=7.4-2;")));
    desk->BeginTrans();
    desk->Execute(QStringLiteral("INSERT INTO t_HospSetup (HS_KEY) VALUES ('a')"));
    EXPECT_TRUE(errorOf([&] { desk->Execute(QStringLiteral("INSERT INTO t_HospSetup (HS_KEY) VALUES ('a')")); }));
    desk->Execute(QStringLiteral("INSERT INTO t_HospSetup (HS_KEY) VALUES ('b')"));
    desk->CommitTrans();
    EXPECT_EQ(clinic.rows(QStringLiteral("SELECT HS_KEY FROM t_HospSetup ORDER BY 1")), (QStringList{"a", "b"}));
}

TEST(Addresses, OfAFileThatIsMissingMakeNone)
{
    for (const char *name : {"sqlite:none.db", "sqlite:", "sqlite::", "sqlite::/"}) {
        EXPECT_EQ(errorOf([&] { ado::Connection::open(QString::fromLatin1(name)); }), ErrorNumber::ConnectionLost) << name;
        EXPECT_FALSE(std::filesystem::exists(name + 7)) << name;
    }
}
