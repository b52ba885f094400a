#include "tests/ado/Desks.h"

#include <algorithm>
#include <iterator>

namespace {

/// More rows than are put in order, or copied, at once.
class LongLists : public Desks
{
protected:
    LongLists()
    {
        QStringList values;
        for (int row = 0; row < 1200; ++row)
            values << QStringLiteral("('p%1')").arg(row * 7 % 1200, 4, 10, QLatin1Char('0'));
        clinic.run(QStringLiteral("INSERT INTO tPSProductMaster (PM_Name) VALUES ") + values.join(u','));
    }
    /// All names, in their order.
    QString stored()
    {
        QStringList names = clinic.rows(QStringLiteral("SELECT PM_Name FROM tPSProductMaster"));
        names.sort();
        return names.join(u' ');
    }
    static QString shown(const Recordset &list)
    {
        QStringList names;
        for (int row = 0; row < list.rowCount(); ++row)
            names << list.valueAt(row, list.columnIndex("PM_Name")).toString();
        return names.join(u' ');
    }

    const QString byName = QStringLiteral("SELECT * FROM tPSProductMaster ORDER BY PM_Name");
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Engines, LongLists, testing::ValuesIn(allEngines), engineName);

TEST_P(LongLists, AreInOrderWhateverHappensBeforeMoreThanTheirBeginningIsSeen)
{
    using Act = void (*)(Recordset &, ado::Connection &);
    const Act acts[]{
        [](Recordset &, ado::Connection &) {},
        [](Recordset &list, ado::Connection &) { list.Delete(); },
        [](Recordset &list, ado::Connection &) { list.setValue("PM_EtcMemo", "seen"), list.Update(); },
        [](Recordset &list, ado::Connection &) { list.Requery(); },
        [](Recordset &list, ado::Connection &connection) {
            connection.BeginTrans();
            list.moveTo(1);
            list.Delete();
            connection.RollbackTrans();
        },
        [](Recordset &list, ado::Connection &) {
            list.AddNew(); // which stands behind all others
            list.setValue("PM_Name", "q");
            list.Update();
        },
    };
    for (const Act act : acts) {
        for (const bool beginning : {true, false}) {
            const auto list = opened(byName);
            if (beginning) {
                EXPECT_EQ(list->valueAt(63, list->columnIndex("PM_Name")), stored().split(u' ')[63]);
            }
            act(*list, *desk);
            EXPECT_EQ(shown(*list), stored()) << std::distance(std::begin(acts), std::ranges::find(acts, act));
        }
    }
    const auto list = opened(byName);
    const ado::Bookmark last = list->bookmarkAt(list->rowCount() - 1);
    const auto other = opened(byName);
    other->setBookmark(last);
    EXPECT_EQ(other->currentRow(), other->rowCount() - 1);
}

TEST_P(LongLists, AreTakenOverOnlyWhereEveryCellIsTheSame)
{
    for (const char *meanwhile : {"PM_Name = PM_Name", "PM_EtcMemo = ''", "PM_EtcMemo = NULL", "PM_EtcMemo = 'a'",
                                  "PM_EtcMemo = 'b'", "PM_Name = 'o'", "PM_UnitPrice = 3"}) {
        const auto before = openedNext(byName);
        clinic.otherDesk()->Execute(
            QStringLiteral("UPDATE tPSProductMaster SET %1 WHERE PM_PK = 700").arg(QString::fromUtf8(meanwhile)));
        const auto next = openedNext(byName);
        EXPECT_EQ(shown(*next), stored()) << meanwhile;
        const auto row = opened(QStringLiteral("SELECT * FROM tPSProductMaster WHERE PM_PK = 700"));
        next->setBookmark(row->bookmarkAt(0));
        for (const char *column : {"PM_Name", "PM_EtcMemo", "PM_UnitPrice"})
            EXPECT_EQ(next->value(column), row->value(column)) << meanwhile;
        before->Sort(QStringLiteral("PM_Name DESC"));
        EXPECT_EQ(before->rowCount(), next->rowCount());
    }
}

TEST_P(LongLists, AreSortedByWhatWasReadAgain)
{
    Recordset list;
    list.setCursorLocation(CursorLocation::Client);
    list.Open(byName, desk, CursorType::Keyset, LockType::Optimistic);
    list.moveTo(900);
    clinic.run(QStringLiteral("UPDATE tPSProductMaster SET PM_Name = 'a' WHERE PM_Name = '%1'")
                   .arg(list.value("PM_Name").toString()));
    list.Resync();
    list.Sort(QStringLiteral("PM_Name"));
    EXPECT_EQ(shown(list), stored());
}

TEST_P(LongLists, OpenedAgainAreInOrderWhateverAnotherProgramDidMeanwhile)
{
    for (const char *meanwhile : {"UPDATE tPSProductMaster SET PM_Name = 'p0' WHERE PM_PK = 700",
                                  "DELETE FROM tPSProductMaster WHERE PM_PK < 40",
                                  "INSERT INTO tPSProductMaster (PM_Name) VALUES ('p0000x'), ('a')"}) {
        clinic.run(QString::fromUtf8(meanwhile));
        for (const CursorType cursor : {CursorType::Static, CursorType::Keyset}) {
            const auto list =
                opened(QStringLiteral("SELECT PM_PK, PM_Name FROM tPSProductMaster ORDER BY PM_Name"), cursor);
            const QStringList names = column(*list, QStringLiteral("PM_Name")).split(u' ');
            EXPECT_TRUE(std::ranges::is_sorted(names)) << meanwhile;
            EXPECT_EQ(names.size(), clinic.value(QStringLiteral("SELECT COUNT(*) FROM tPSProductMaster")).toInt());
        }
    }
}
