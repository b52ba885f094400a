#include "components/frame/Reading.h"
#include "desk/backup/Backup.h"
#include "tests/support/TestDatabase.h"

#include <QDateTime>
#include <QFile>

using statistics::Figure;
using statistics::Period;

namespace {

/// A figure that is another one each time it is read, so that a kept one shows.
class KeptFigures : public testing::TestWithParam<ado::Engine>
{
protected:
    QString read(const Period &period = statistics::dayOf(QDate(2026, 6, 30))) { return read(clinic_, period); }
    static QString read(TestDatabase &clinic, const Period &period)
    {
        QString dice;
        statistics::Reading(clinic.connection(), {figure(dice)}, period).readAll();
        return dice;
    }
    static Figure figure(QString &dice)
    {
        Figure figure{QStringLiteral("SELECT CAST(random() AS VARCHAR(40)) AS Dice, '[FROM]' AS Day")};
        figure.isKept = true;
        figure.take = [&dice](const statistics::Record &row) { dice = row.text(0); };
        return figure;
    }
    static QString sale(const char *money)
    {
        return QStringLiteral("INSERT INTO tPSTransaction (tpstrans_Money) VALUES (%1)").arg(QLatin1String(money));
    }
    /// As after a write by a machine whose clock is behind.
    void setClockBack(const QDateTime &time)
    {
        for (const char *suffix : {"", "-wal", "-shm"}) {
            QFile file(clinic_.address().section(u':', 1) + QLatin1String(suffix));
            if (clinic_.engine() == ado::Engine::SQLite && file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly))
                file.setFileTime(time, QFileDevice::FileModificationTime);
        }
    }

    TestDatabase clinic_{GetParam()};
    const bool keeps_ = GetParam() != ado::Engine::Odbc;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Engines, KeptFigures,
                         testing::Values(ado::Engine::SQLite, ado::Engine::PostgreSQL, ado::Engine::Odbc), engineName);

TEST_P(KeptFigures, AreReadAnewOnceAnybodyWroteAndOnlyThen)
{
    const QTemporaryDir folder;
    const QString backup = folder.filePath(QStringLiteral("kept.backup"));
    const QString server = clinic_.address();
    const QDateTime before = QDateTime::currentDateTime().addDays(-1);
    ado::Connection &desk = *clinic_.connection();
    struct Case
    {
        const char *what;
        std::function<void()> happens;
        bool isKept = false;
    };
    const Case cases[] = {
        {"nothing", [] {}, true},
        {"another desk reads", [&] { clinic_.otherDesk()->read(QStringLiteral("SELECT * FROM tPSTransaction")); },
         true},
        {"this desk writes", [&] { desk.Execute(sale("1")); }},
        {"another desk writes", [&] { clinic_.otherDesk()->Execute(sale("2")); }},
        {"another program writes, by a clock that was set back",
         [&] {
             clinic_.run(sale("3"));
             setClockBack(before);
         }},
        {"another program changes a table",
         [&] { clinic_.run(QStringLiteral("ALTER TABLE tPSTransaction ADD COLUMN host_note TEXT")); }},
        {"this desk changes a table", [&] { desk.Execute(QStringLiteral("CREATE TABLE host_table (a INTEGER)")); }},
        {"a backup is made",
         [&] {
             if (keeps_)
                 backup::backUp(server, backup);
             desk.Execute(QStringLiteral("DELETE FROM tPSTransaction"));
             read();
         }},
        {"it is restored",
         [&] {
             if (keeps_)
                 backup::restore(server, backup);
         }},
    };
    clinic_.otherDesk(); // whose coming writes
    for (const Case &one : cases) {
        bool same = false;
        for (int tries = one.isKept ? 3 : 1; !same && tries > 0;
             --tries) { // the server may look after itself meanwhile
            const QString first = read();
            one.happens();
            same = read() == first;
        }
        EXPECT_EQ(same, keeps_ && one.isKept) << one.what;
    }
    EXPECT_NE(read(), read({QDate(2026, 6, 1), QDate(2026, 6, 30)})) << "of other days";
}

TEST_P(KeptFigures, AreNotThoseOfAnotherDatabaseOfATransactionOrOfTwoStates)
{
    TestDatabase other{GetParam()}; // made alike, with the same signs
    const QString here = read({});
    EXPECT_NE(read(other, {}), here);

    ado::Connection &desk = *clinic_.connection();
    desk.BeginTrans();
    desk.Execute(sale("1"));
    const QString uncommitted = read();
    EXPECT_NE(read(), uncommitted);
    desk.RollbackTrans();
    EXPECT_NE(read(), uncommitted);

    QString first, second;
    statistics::Reading reading(clinic_.connection(), {figure(first), figure(second)}, {});
    reading.step();
    clinic_.otherDesk()->Execute(sale("2"));
    reading.readAll();
    EXPECT_NE(read({}), first);
    EXPECT_NE(read({}), second);
}
