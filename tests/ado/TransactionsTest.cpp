#include "platform/ado/Transaction.h"
#include "tests/ado/Desks.h"
#include "tests/support/Cases.h"

#include <QScopeGuard>

#include <cstdlib>
#include <functional>

using ado::AbandonedTransactions;

class Transactions : public Desks
{
protected:
    void add(const char *name, const ado::ConnectionPtr &where)
    {
        where->Execute(
            QStringLiteral("INSERT INTO tPSProductMaster (PM_Name) VALUES ('%1')").arg(QString::fromUtf8(name)));
    }
    void add(const char *name) { add(name, desk); }

    QString seen() { return names().join(u' '); }

    /// A word of a case; what is none is a statement.
    void step(const QString &word)
    {
        if (word == u"BeginTrans")
            desk->BeginTrans();
        else if (word == u"CommitTrans")
            desk->CommitTrans();
        else if (word == u"RollbackTrans")
            desk->RollbackTrans();
        else if (word.startsWith(u'+'))
            add(word.sliced(1).toUtf8());
        else
            desk->Execute(word == u"refused" ? QStringLiteral("INSERT INTO tPSOrderMaster (Cust_PK) VALUES (NULL)")
                                             : word);
    }
    /// The steps of an event, with its scopes; an error leaves all of them.
    void work(const QString &steps)
    {
        std::vector<std::pair<std::unique_ptr<AbandonedTransactions>, std::unique_ptr<ado::Transaction>>> scopes;
        const auto leaveAll = qScopeGuard([&] {
            while (!scopes.empty())
                scopes.pop_back();
        });
        for (const QString &word : steps.split(u' ')) {
            if (word == u"event{")
                scopes.emplace_back(std::make_unique<AbandonedTransactions>(), nullptr);
            else if (word == u"scope{")
                scopes.emplace_back(nullptr, std::make_unique<ado::Transaction>(*desk));
            else if (word == u"}")
                scopes.pop_back();
            else if (word == u"commit")
                scopes.back().second->commit();
            else
                step(word);
        }
    }
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
        {"begun and written in",
         [&] {
             desk->BeginTrans();
             add("lost");
         },
         ""},
        {"an error leaves the handler",
         [&] {
             desk->BeginTrans();
             add("lost");
             throw runtime::RuntimeError(ErrorNumber::Database, QStringLiteral("x"));
         },
         ""},
        {"begun anew after a commit",
         [&] {
             desk->BeginTrans();
             add("kept");
             desk->CommitTrans();
             desk->BeginTrans();
             add("lost");
         },
         "kept"},
        {"committed",
         [&] {
             desk->BeginTrans();
             add("kept");
             desk->CommitTrans();
         },
         "kept"},
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

TEST_P(Transactions, OfAScopeAreSavedByItsCommitAndUndoneByEveryOtherEnd)
{
    const auto fail = [] { throw runtime::RuntimeError(ErrorNumber::TypeMismatch, QStringLiteral("x")); };
    const struct
    {
        const char *name;
        std::function<void(ado::Transaction &)> work;
        const char *left;
        std::optional<ErrorNumber> told;
    } cases[]{
        {"committed", [](auto &scope) { scope.commit(); }, "kept", {}},
        {"left early", [](auto &) {}, "", {}},
        {"left by an error", [&](auto &) { fail(); }, "", ErrorNumber::TypeMismatch},
        {"left by an error after its commit",
         [&](auto &scope) {
             scope.commit();
             fail();
         },
         "kept", ErrorNumber::TypeMismatch},
        {"left by an error of one that joined",
         [&](auto &) {
             ado::Transaction joined(*desk);
             fail();
         },
         "", ErrorNumber::TypeMismatch},
        {"left open and ended by the next", [&](auto &scope) { scope.leaveOpen(); }, "kept", {}},
    };
    for (const auto &one : cases) {
        SCOPED_TRACE(one.name);
        clinic.run(QStringLiteral("DELETE FROM tPSProductMaster"));
        const auto told = errorOf([&] {
            ado::Transaction scope(*desk);
            add("kept");
            one.work(scope);
        });
        EXPECT_EQ(told, one.told);
        if (desk->inTransaction())
            ado::Transaction(*desk).commit();
        EXPECT_EQ(seen(), one.left);
    }
}

TEST_P(Transactions, OfTheHostCanBeEndedByItWithinAnEvent)
{
    desk->BeginTrans();
    add("lost");
    {
        AbandonedTransactions edge;
        desk->RollbackTrans(); // the host's timer, while a dialog stands
        desk->BeginTrans();
        add("lost");
    }
    EXPECT_FALSE(desk->inTransaction());
    EXPECT_EQ(seen(), "");
}

TEST_P(Transactions, OfAnEventLieInThoseThatWereOpenBeforeIt)
{
    for (const QStringList &one : casesOf("ado/host-transactions.cases", 2)) {
        for (const char *host :
             {"BeginTrans, CommitTrans", "BeginTrans, RollbackTrans", "BEGIN, COMMIT", "BEGIN, ROLLBACK"}) {
            SCOPED_TRACE(one[0].toStdString() + ", " + host);
            const QStringList words = QString::fromLatin1(host).split(QStringLiteral(", "));
            clinic.run(QStringLiteral("DELETE FROM tPSProductMaster"));
            step(words[0]);
            add("hosts");
            errorOf([&] {
                const AbandonedTransactions edge;
                EXPECT_FALSE(desk->inTransaction()) << "not the event's";
                work(one[0]);
            });
            add("after");
            EXPECT_EQ(seen(), "") << "nothing is saved before the host does";
            step(words[1]);
            EXPECT_EQ(seen(), words[1].startsWith(u'C') ? one[1] : QString());
        }
    }
}

TEST_P(Transactions, OfAnEventAreUndoneInEveryListWithTheirHosts)
{
    addProducts({"a", "b", "c"});
    const auto products = opened(allProducts);
    const auto shown = [&] {
        QStringList names;
        for (int row = 0; row < products->rowCount(); ++row)
            names << runtime::text(products->valueAt(row, products->columnIndex("PM_Name")));
        return names.join(u' ');
    };
    const auto write = [&](int row, const char *name) {
        products->moveTo(row);
        products->setValue("PM_Name", name);
        products->Update();
    };
    desk->BeginTrans();
    write(0, "hosts");
    {
        const AbandonedTransactions edge;
        ado::Transaction scope(*desk);
        write(1, "sold");
        products->AddNew();
        products->setValue("PM_Name", "new");
        products->Update();
        scope.commit();
    }
    {
        const AbandonedTransactions edge;
        desk->BeginTrans();
        write(0, "lost");
        write(1, "lost");
        products->moveTo(2);
        products->Delete();
    }
    EXPECT_EQ(shown(), "hosts sold c new") << "only what the second event wrote is undone";
    write(2, "after"); // no conflict with a deletion that never was
    desk->RollbackTrans();
    EXPECT_EQ(shown(), "a b c");
    write(1, "saved");
    EXPECT_EQ(seen(), "a saved c");
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

TEST_P(Transactions, RolledBackLeaveEveryListAsItIsStored)
{
    addProducts({"a", "b", "c"});
    const auto products = opened(allProducts);
    const auto clone = products->Clone();
    const auto other = opened(allProducts);
    const auto shown = [](const Recordset &rows) {
        QStringList names;
        for (int row = 0; row < rows.rowCount(); ++row)
            names << runtime::text(rows.valueAt(row, rows.columnIndex("PM_Name")));
        return names.join(u' ');
    };
    std::unique_ptr<Recordset> openedInside;
    Told toldOther(*other);
    Told told(*products);
    {
        AbandonedTransactions edge;
        desk->BeginTrans();
        desk->Execute(QStringLiteral("UPDATE tPSProductMaster SET PM_Name = 'lost' WHERE PM_Name = 'a'"));
        other->moveTo(0);
        products->moveTo(1);
        products->setValue("PM_Name", "lost");
        products->Update();
        products->MoveNext();
        products->Delete();
        products->AddNew();
        products->setValue("PM_Name", "new");
        products->Update();
        openedInside = opened(allProducts);
        EXPECT_EQ(shown(*openedInside), "lost lost new");
        other->moveTo(1);
        toldOther.take();
        told.take();
    }
    EXPECT_EQ(told.take(), "reset") << "and no change of row: its handlers would wipe what was typed";
    EXPECT_EQ(toldOther.take(), "read0 read1");
    for (Recordset *rows : {products.get(), clone.get(), other.get(), openedInside.get()})
        EXPECT_EQ(shown(*rows), "a b c");
    EXPECT_FALSE(products->hasCurrent()) << "the new row never was";
    EXPECT_EQ(other->value("PM_Name"), "b");
    EXPECT_EQ(clone->value("PM_Name"), "a");
    products->moveTo(1);
    products->setValue("PM_EtcMemo", "saved");
    products->Update(); // no conflict with a writing that never was
    products->moveTo(2);
    products->Delete(); // nor with such a deletion
    EXPECT_EQ(seen(), "a b");
}

TEST_P(Transactions, RolledBackLeaveAListThatWasReadWholeAsItIsStored)
{
    addProducts({"a", "b"});
    Recordset products;
    products.setCursorLocation(CursorLocation::Client);
    products.Open(allProducts, desk, CursorType::Keyset, LockType::Optimistic);
    clinic.run(QStringLiteral("UPDATE tPSProductMaster SET PM_Name = 'y' WHERE PM_Name = 'a'"));
    products.Resync();
    desk->BeginTrans();
    desk->Execute(QStringLiteral("UPDATE tPSProductMaster SET PM_Name = 'lost' WHERE PM_Name = 'y'"));
    products.Resync();
    desk->RollbackTrans();
    EXPECT_EQ(products.valueAt(0, products.columnIndex("PM_Name")), "y") << "neither the lost value nor the one before";
    products.Sort(QStringLiteral("PM_Name"));
    EXPECT_EQ(column(products, "PM_Name"), "b y");
}
