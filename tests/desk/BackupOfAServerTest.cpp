#include "desk/backup/Backup.h"
#include "desk/backup/PostgresTool.h"
#include "platform/runtime/RuntimeError.h"
#include "tests/support/TestDatabase.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

TEST(BackupOfAServer, LeavesNothingInAnEmptyDatabaseWhenItCannotBeRestored)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath("good.backup");
    TestDatabase clinic(ado::Engine::PostgreSQL);
    clinic.run("CREATE ROLE of_another_server");
    clinic.run("GRANT SELECT ON Customer TO of_another_server");
    backup::backUp(clinic.address(), file);
    clinic.run("DROP OWNED BY of_another_server");
    clinic.run("DROP ROLE of_another_server");
    TestDatabase empty(ado::Engine::PostgreSQL, false);
    const QString things = QStringLiteral("SELECT (SELECT COUNT(*) FROM pg_class WHERE relnamespace = "
                                          "'public'::regnamespace) + (SELECT COUNT(*) FROM pg_namespace WHERE nspname "
                                          "= 'clinic_like') + (SELECT COUNT(*) FROM pg_db_role_setting s JOIN "
                                          "pg_database d ON d.oid = s.setdatabase WHERE datname = current_database())");
    EXPECT_ANY_THROW(backup::restore(empty.address(), file));
    EXPECT_EQ(empty.value(things), "0");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 1);
}

/// The server cuts off who stands still in a transaction; a large clinic is read for longer than that by another session.
TEST(BackupOfAServer, TakesAsLongAsItTakes)
{
    const QTemporaryDir folder;
    TestDatabase clinic(ado::Engine::PostgreSQL);
    clinic.run(QStringLiteral("ALTER DATABASE %1 SET idle_in_transaction_session_timeout = '50ms'")
                   .arg(clinic.serverDatabase()));
    EXPECT_NO_THROW(backup::backUp(clinic.address(), folder.filePath("whole.backup")));
}

TEST(BackupOfAServer, HandsNoOptionThatMayBeASecretOverAmongTheArguments)
{
    TestDatabase server(ado::Engine::PostgreSQL, false);
    const QString secrets = QStringLiteral("&password=s3cret&sslpassword=s3cret&application_name=s3cret");
    const backup::PostgresPlace place = backup::PostgresPlace::of(server.address() + secrets);
    EXPECT_FALSE(place.connection.contains("s3cret")) << place.connection.toStdString();
    const QByteArray said = backup::runPostgresTool(
        QStringLiteral("psql"),
        {QStringLiteral("--dbname=") + place.connection, QStringLiteral("-Atc"),
         QStringLiteral("SELECT current_database() || ' ' || current_setting('application_name')")},
        place);
    EXPECT_EQ(said, server.serverDatabase().toUtf8() + " s3cret\n");
    for (const char *unfit : {"&service=x", "%20"})
        EXPECT_THROW(backup::PostgresPlace::of(server.address() + secrets + unfit), runtime::RuntimeError) << unfit;
}
