#include "tests/ado/Desks.h"

using ado::AbandonedTransactions;

class Transactions : public Desks
{
protected:
    void add(const char *name, const ado::ConnectionPtr &where)
    {
        where->Execute(QStringLiteral("INSERT INTO tPSProductMaster (PM_Name) VALUES ('%1')").arg(QString::fromUtf8(name)));
    }
    void add(const char *name) { add(name, desk); }

    QString seen() { return names().join(u' '); }
};
INSTANTIATE_TEST_SUITE_P(Engines, Transactions, testing::ValuesIn(allEngines), engineName);

TEST_P(Transactions, KeepOrUndoWhatWasWritten)
{
    desk->BeginTrans();
    add("a");
    const auto products = opened(allProducts);
    EXPECT_EQ(products->rowCount(), 1) << "this desk sees its own writing";
    EXPECT_EQ(seen(), "") << "no other does";
    desk->CommitTrans();
    EXPECT_EQ(seen(), "a");

    desk->BeginTrans();
    add("b");
    products->setValue("PM_Name", "changed");
    products->Update();
    products->AddNew();
    products->setValue("PM_Name", "c");
    products->Update();
    desk->RollbackTrans();
    EXPECT_FALSE(desk->inTransaction());
    EXPECT_EQ(seen(), "a");
    add("d");
    EXPECT_EQ(seen(), "a d") << "saved at once again";
}

TEST_P(Transactions, BegunTwiceAreOne)
{
    desk->BeginTrans();
    const quint64 serial = desk->transactionSerial();
    EXPECT_NE(serial, 0U);
    add("a");
    desk->BeginTrans();
    EXPECT_EQ(desk->transactionSerial(), serial);
    add("b");
    desk->CommitTrans();
    EXPECT_EQ(desk->transactionSerial(), 0U);
    EXPECT_EQ(seen(), "a b");
    EXPECT_EQ(errorOf([&] { desk->CommitTrans(); }), ErrorNumber::InvalidCall);
    EXPECT_EQ(errorOf([&] { desk->RollbackTrans(); }), std::nullopt) << "nothing to undo";
    add("c");
    EXPECT_EQ(seen(), "a b c");
}

TEST_P(Transactions, BegunButNotWrittenInHoldNothing)
{
    addProducts({"a"});
    desk->BeginTrans();
    const auto products = opened(allProducts);
    products->setValue("PM_Name", "mine");
    add("b", clinic.otherDesk()); // would wait for the whole busy time
    EXPECT_EQ(products->rowCount(), 1);
    desk->CommitTrans();
    EXPECT_EQ(seen(), "a b");
}

TEST_P(Transactions, BeginTheirWritingAfterAnotherDesksCommit)
{
    addProducts({"a"});
    desk->BeginTrans();
    const auto products = opened(allProducts);
    add("b", clinic.otherDesk());
    products->setValue("PM_EtcMemo", "memo");
    products->Update();
    add("c");
    desk->CommitTrans();
    EXPECT_EQ(seen(), "a b c");
}

TEST_P(Transactions, GoOnAfterAStatementThatFailed)
{
    desk->BeginTrans();
    add("a");
    EXPECT_EQ(errorOf([&] { desk->Execute(QStringLiteral("INSERT INTO tPSOrderMaster (Cust_PK) VALUES (NULL)")); }),
              ErrorNumber::Database);
    EXPECT_EQ(errorOf([&] { opened(QStringLiteral("SELECT * FROM tPSNothing")); }), ErrorNumber::Database);
    const auto orders = opened(QStringLiteral("SELECT * FROM tPSOrderMaster"));
    orders->AddNew();
    EXPECT_EQ(errorOf([&] { orders->Update(); }), ErrorNumber::Database);
    add("b");
    desk->CommitTrans();
    EXPECT_EQ(seen(), "a b");
}

TEST_P(Transactions, AbandonedByAnEventEndWithIt)
{
    struct Case
    {
        const char *name;
        std::function<void()> event;
        const char *left;
    };
    const auto writes = [this](const char *name) { return [this, name] { add(name); }; };
    const Case cases[]{
        {"begun alone", [&] { desk->BeginTrans(); }, ""},
        {"begun and written in", [&] { desk->BeginTrans(); add("lost"); }, ""},
        {"an error leaves the handler", [&] {
             desk->BeginTrans();
             add("lost");
             throw runtime::RuntimeError(ErrorNumber::Database, QStringLiteral("x"));
         }, ""},
        {"begun anew after a commit", [&] {
             desk->BeginTrans();
             add("kept");
             desk->CommitTrans();
             desk->BeginTrans();
             add("lost");
         }, "kept"},
        {"joined", [&] {
             desk->BeginTrans();
             add("lost");
             desk->BeginTrans();
             add("lost too");
         }, ""},
        {"committed", [&] { desk->BeginTrans(); add("kept"); desk->CommitTrans(); }, "kept"},
        {"none", writes("kept"), "kept"},
    };
    for (const Case &one : cases) {
        SCOPED_TRACE(one.name);
        clinic.run(QStringLiteral("DELETE FROM tPSProductMaster"));
        try {
            AbandonedTransactions edge;
            one.event();
        } catch (const runtime::RuntimeError &) {
        }
        EXPECT_FALSE(desk->inTransaction());
        EXPECT_EQ(seen(), one.left);
        // The next work is neither held up nor captured.
        add("other", clinic.otherDesk());
        {
            AbandonedTransactions edge;
            add("next");
        }
        EXPECT_EQ(seen(), QString::fromLatin1(one.left) + (*one.left ? " " : "") + "other next");
    }
}

TEST_P(Transactions, OpenBeforeAnEventAreLeftToThoseWhoBeganThem)
{
    desk->BeginTrans();
    add("hosts");
    {
        AbandonedTransactions edge;
        add("inside");
        desk->BeginTrans(); // joins
    }
    EXPECT_TRUE(desk->inTransaction());
    desk->CommitTrans();
    EXPECT_EQ(seen(), "hosts inside");

    desk->BeginTrans();
    {
        AbandonedTransactions edge;
        desk->RollbackTrans(); // ends the host's too: nesting is flat
        desk->BeginTrans();
        add("lost");
    }
    EXPECT_FALSE(desk->inTransaction());
    EXPECT_EQ(seen(), "hosts inside");
}

TEST_P(Transactions, AreRolledBackBeforeAMessageBoxNotBehindIt)
{
    AbandonedTransactions edge;
    desk->BeginTrans();
    add("lost");
    edge.rollBack();
    EXPECT_FALSE(desk->inTransaction());
    add("other", clinic.otherDesk());
    desk->BeginTrans();
    add("again");
    edge.rollBack();
    EXPECT_EQ(seen(), "other");
}

TEST_P(Transactions, AbandonedOnTwoConnectionsBothEnd)
{
    const ado::ConnectionPtr second = ado::Connection::open(clinic.address());
    {
        AbandonedTransactions edge;
        desk->BeginTrans();
        second->BeginTrans();
        add("lost");
    }
    EXPECT_FALSE(desk->inTransaction() || second->inTransaction());
    EXPECT_EQ(seen(), "");
}

TEST_P(Transactions, DieWithTheirConnectionAndHoldNoLock)
{
    {
        const ado::ConnectionPtr gone = ado::Connection::open(clinic.address());
        gone->BeginTrans();
        add("lost", gone);
    }
    add("kept");
    EXPECT_EQ(seen(), "kept");
}

TEST_P(Transactions, RolledBackLeaveNoFalseImageOfTheRow)
{
    addProducts({"a"});
    const auto products = opened(allProducts);
    {
        AbandonedTransactions edge;
        desk->BeginTrans();
        products->setValue("PM_Name", "lost");
        products->Update();
    }
    EXPECT_EQ(products->value("PM_Name"), "a");
    products->setValue("PM_EtcMemo", "saved");
    products->Update(); // no conflict with a writing that never was
    EXPECT_EQ(clinic.value(QStringLiteral("SELECT PM_Name, PM_EtcMemo FROM tPSProductMaster")), "a|saved");
}

TEST_P(Transactions, WaitForAnotherDesksShortOne)
{
    addProducts({"a"});
    clinic.otherDesk()->BeginTrans();
    add("b", clinic.otherDesk());
    EXPECT_EQ(opened(allProducts)->rowCount(), 1) << "reading waits for nobody";
    clinic.otherDesk()->CommitTrans();
    add("c");
    EXPECT_EQ(seen(), "a b c");
}

TEST(SqliteConnection, IsSetUpForMoney)
{
    TestDatabase clinic(ado::Engine::SQLite);
    Recordset settings;
    const auto pragma = [&](const char *name) {
        Recordset setting;
        setting.Open(QStringLiteral("SELECT * FROM pragma_%1").arg(QLatin1String(name)), clinic.connection(), CursorType::Static,
                     LockType::ReadOnly);
        return runtime::text(setting.value(setting.fieldNames().first()));
    };
    EXPECT_EQ(pragma("journal_mode"), "wal");
    EXPECT_EQ(pragma("synchronous"), "2");
    EXPECT_EQ(pragma("cache_size"), "-65536");
}

TEST(SqliteConnection, RefusesAMissingFileUnlessItMayMakeOne)
{
    QTemporaryDir folder;
    const QString address = QStringLiteral("sqlite:") + folder.filePath(QStringLiteral("clinic.db"));
    EXPECT_EQ(errorOf([&] { ado::Connection::open(address); }), ErrorNumber::ConnectionLost);
    EXPECT_EQ(errorOf([&] { ado::Connection::open(address, true); }), std::nullopt);
    EXPECT_EQ(errorOf([&] { ado::Connection::open(address); }), std::nullopt);
    QFile text(folder.filePath(QStringLiteral("letter.txt")));
    ASSERT_TRUE(text.open(QIODevice::WriteOnly) && text.write(QByteArray(2000, 'x')) > 0);
    text.close();
    EXPECT_TRUE(errorOf([&] { ado::Connection::open(QStringLiteral("sqlite:") + text.fileName()); }));
    EXPECT_EQ(errorOf([&] { ado::Connection::open(QStringLiteral("nosuch:x")); }), ErrorNumber::ConnectionLost);
}
