#include "platform/ado/Transaction.h"
#include "tests/ado/Desks.h"
#include "tests/support/QtSession.h"

#include <QSqlQuery>

namespace {

/// A session that the host has opened by Qt, adopted beside it.
class Adopted : public Desks
{
protected:
    void sell(const char *name)
    {
        const ado::AbandonedTransactions edge;
        ado::Transaction sale(*adopted);
        add(name);
        sale.commit();
    }
    void add(const char *name) { adopted->Execute(adding(name)); }
    static QString adding(const char *name)
    {
        return QStringLiteral("INSERT INTO tPSProductMaster (PM_Name) VALUES ('%1')").arg(QLatin1String(name));
    }
    void host(const char *statement)
    {
        QSqlQuery query(session.database());
        EXPECT_TRUE(query.exec(QLatin1String(statement))) << statement;
    }
    bool readsClasses()
    {
        const auto found = opened(QStringLiteral("SELECT CASE WHEN 'b' LIKE '[abc]' THEN 1 ELSE 0 END AS found"),
                                  CursorType::Static, LockType::ReadOnly, adopted);
        return runtime::isTrue(found->value("found"));
    }

    QtSession session{clinic};
    ado::ConnectionPtr adopted = ado::Connection::adopt(session.database());
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Engines, Adopted,
                         testing::Values(ado::Engine::SQLite, ado::Engine::PostgreSQL, ado::Engine::Odbc), engineName);

TEST_P(Adopted, SalesLieInTheHostsTransaction)
{
    QSqlDatabase database = session.database();
    ASSERT_TRUE(database.transaction());
    sell("a"); // before any statement of the host's
    host("INSERT INTO tPSProductMaster (PM_Name) VALUES ('hosts')");
    EXPECT_EQ(errorOf([&] {
                  const ado::AbandonedTransactions edge;
                  const ado::Transaction sale(*adopted);
                  add("lost");
                  adopted->Execute(QStringLiteral("INSERT INTO tPSOrderMaster (Cust_PK) VALUES (NULL)"));
              }),
              ErrorNumber::Database);
    EXPECT_EQ(names().join(u' '), "") << "nothing is saved before the host does";
    ASSERT_TRUE(database.commit());
    EXPECT_EQ(names().join(u' '), "a hosts");

    ASSERT_TRUE(database.transaction());
    sell("lost");
    const auto products = opened(allProducts, CursorType::Keyset, LockType::Optimistic, adopted);
    ASSERT_TRUE(database.rollback());
    EXPECT_FALSE(products->moveToKey(products->bookmarkAt(2))) << "what the host took back is not there";
    sell("b");
    EXPECT_EQ(names().join(u' '), "a hosts b") << "saved at once again";

    ASSERT_TRUE(database.transaction());
    adopted->Execute(QStringList{adding("c"), adding("d")});
    ASSERT_TRUE(database.commit());
    EXPECT_EQ(names().join(u' '), "a hosts b c d") << "nothing waits for a statement of the layer's own";
}

TEST_P(Adopted, ListsThatKeepTheirRowsShowWhatTheHostWrote)
{
    const auto shown = [this] { return column(*openedNext(allProducts, adopted), QStringLiteral("PM_Name")); };
    sell("a");
    EXPECT_EQ(shown(), "a");
    host("UPDATE tPSProductMaster SET PM_Name = 'b'");
    EXPECT_EQ(shown(), "b");
    sell("c");
    host("DELETE FROM tPSProductMaster WHERE PM_Name = 'b'");
    EXPECT_EQ(shown(), "c");
    QSqlDatabase database = session.database();
    ASSERT_TRUE(database.transaction());
    host("INSERT INTO tPSProductMaster (PM_Name) VALUES ('d')");
    EXPECT_EQ(shown(), "c d");
    ASSERT_TRUE(database.rollback());
    EXPECT_EQ(shown(), "c");
}

TEST_P(Adopted, MoneyIsExactWhateverTheHostsPrecision)
{
    session.database().setNumericalPrecisionPolicy(QSql::LowPrecisionDouble);
    clinic.run("INSERT INTO tPSOrderMaster (Cust_PK, OrdM_Date, OrdM_Total) VALUES (7, '2026-11-24', 922337203685477)");
    const auto orders = opened(QStringLiteral("SELECT OrdM_Total FROM tPSOrderMaster"), CursorType::Static,
                               LockType::ReadOnly, adopted);
    EXPECT_EQ(runtime::text(orders->value("OrdM_Total")), "922337203685477");
}

TEST_P(Adopted, SessionsAreTheHostsToCloseAndFoundAgainWhenTheyAreOpen)
{
    EXPECT_TRUE(readsClasses());
    QSqlDatabase database = session.database();
    database.close();
    EXPECT_EQ(database.lastError().text(), "") << "nothing of the layer's holds it";
    EXPECT_EQ(errorOf([&] { sell("a"); }), ErrorNumber::ConnectionLost);
    EXPECT_EQ(errorOf([&] { opened(allProducts, CursorType::Static, LockType::ReadOnly, adopted); }),
              ErrorNumber::ConnectionLost);
    ASSERT_TRUE(database.open());
    sell("b");
    EXPECT_TRUE(readsClasses()) << "the new session is set up like the first";

    adopted.reset();
    host("INSERT INTO tPSProductMaster (PM_Name) VALUES ('hosts')");
    EXPECT_EQ(names().join(u' '), "b hosts");
}

TEST_P(Adopted, SessionsThatWereRemovedAreAnErrorAndNoWarning)
{
    static QStringList said;
    said.clear();
    const QtMessageHandler earlier =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &message) { said << message; });
    session.remove();
    qInstallMessageHandler(earlier);
    EXPECT_EQ(said.join(u'\n'), "");
    EXPECT_EQ(errorOf([&] { sell("a"); }), ErrorNumber::ConnectionLost);
}

TEST(AdoptedFile, KeepsItsWayOfLogging)
{
    TestDatabase clinic(ado::Engine::SQLite, false);
    const QtSession session(clinic);
    ado::Connection::adopt(session.database())->Execute(QStringLiteral("CREATE TABLE money (won INTEGER)"));
    QSqlQuery way(QStringLiteral("PRAGMA journal_mode"), session.database());
    ASSERT_TRUE(way.next());
    EXPECT_EQ(way.value(0).toString(), "delete");
}

TEST(AdoptedServer, RefusesWhatWouldCostTheHostItsRowsOrItsTransaction)
{
    TestDatabase clinic(ado::Engine::PostgreSQL);
    const QtSession session(clinic);
    const ado::ConnectionPtr adopted = ado::Connection::adopt(session.database());
    QSqlQuery rows(session.database());
    rows.setForwardOnly(true);
    ASSERT_TRUE(rows.exec(QStringLiteral("SELECT * FROM generate_series(1, 3)")) && rows.next());
    EXPECT_EQ(errorOf([&] { adopted->read(QStringLiteral("SELECT 1")); }), ErrorNumber::InvalidCall);
    EXPECT_TRUE(rows.next() && rows.next()) << "they are all still there";
    rows.clear();
    EXPECT_EQ(errorOf([&] { adopted->read(QStringLiteral("SELECT 1")); }), std::nullopt);

    TestDatabase odbc(ado::Engine::Odbc);
    const QtSession careless(odbc, QStringLiteral("Protocol=7.4-1"));
    EXPECT_EQ(errorOf([&] { ado::Connection::adopt(careless.database()); }), ErrorNumber::InvalidCall)
        << "a refused statement would roll everything back";
    EXPECT_EQ(errorOf([&] { ado::Connection::adopt(QSqlDatabase()); }), ErrorNumber::ConnectionLost);
}
