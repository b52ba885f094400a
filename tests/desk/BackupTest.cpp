#include "desk/backup/Backup.h"
#include "desk/check/Examination.h"
#include "desk/sample/Clinic.h"
#include "platform/ado/Recordset.h"
#include "platform/runtime/RuntimeError.h"
#include "tests/desk/Content.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>

#include <atomic>
#include <ostream>
#include <thread>

using namespace std::chrono_literals;

namespace {

const QString written = QStringLiteral("SELECT COUNT(*) FROM tPSOrderMaster WHERE OrdM_ETCMemo = 'written'");

/// A desk that sells as fast as it can: an order and its line in one transaction.
class BusyDesk
{
public:
    explicit BusyDesk(const QString &like)
        : desk_([this, like] { sell(like); })
    {
    }
    ~BusyDesk() { stop(); }

    void stop()
    {
        stopped_ = true;
        if (desk_.joinable())
            desk_.join();
    }
    int sales() const { return sales_; }
    void waitForMore(int more) const
    {
        for (const int until = sales_ + more; sales_ < until && !stopped_;)
            std::this_thread::sleep_for(1ms);
    }

private:
    void sell(const QString &like)
    {
        const QString name = like + QStringLiteral("-busy");
        {
            QSqlDatabase database = QSqlDatabase::cloneDatabase(like, name);
            database.open();
            QSqlQuery query(database);
            while (!stopped_) {
                database.transaction();
                const int key = 100'000 + sales_;
                bool fine = query.exec(
                    QStringLiteral("INSERT INTO tPSOrderMaster (OrdM_PK, Cust_PK, OrdM_Date, OrdM_Total, "
                                   "OrdM_TaxTotal, OrdM_ETCMemo) VALUES (%1, 1, '2026-11-24', 700, 700, 'written')")
                        .arg(key));
                fine =
                    query.exec(
                        QStringLiteral(
                            "INSERT INTO tPSOrderDetail (OrdM_PK, PM_PK, OrdD_UnitPrice, OrdD_HalinUnit, OrdD_Count) "
                            "SELECT %1, MIN(PM_PK), 700, 0, 1 FROM tPSProductMaster WHERE PM_IsTaxed = 1")
                            .arg(key))
                    && fine;
                EXPECT_TRUE(database.commit() && fine) << query.lastError().text().toStdString();
                ++sales_;
            }
        }
        QSqlDatabase::removeDatabase(name);
    }

    std::atomic<bool> stopped_ = false;
    std::atomic<int> sales_ = 0;
    std::thread desk_;
};

class Backup : public testing::TestWithParam<ado::Engine>
{
protected:
    Backup()
        : clinic_(GetParam(), false)
    {
        sample::fill(*clinic_.connection(), sample::Size::Small);
    }

    QString file(const char *name) const { return folder_.filePath(QString::fromLatin1(name)); }
    QStringList files() const { return QDir(folder_.path()).entryList(QDir::Files); }
    void write(const char *name, const QByteArray &bytes) const
    {
        QFile made(file(name));
        ASSERT_TRUE(made.open(QIODevice::WriteOnly) && made.write(bytes) == bytes.size());
    }
    QByteArray read(const char *name) const
    {
        QFile kept(file(name));
        EXPECT_TRUE(kept.open(QIODevice::ReadOnly));
        return kept.readAll();
    }
    /// The text of the refusal; empty when there was none.
    template <typename Work>
    std::string refusal(Work work) const
    {
        try {
            work();
            return {};
        } catch (const runtime::RuntimeError &error) {
            return error.description().toStdString();
        }
    }

    TestDatabase clinic_;
    const QTemporaryDir folder_;
};

std::string joined(const QStringList &lines)
{
    return lines.join(u'\n').toStdString();
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Engines, Backup, testing::Values(ado::Engine::SQLite, ado::Engine::PostgreSQL), engineName);

TEST_P(Backup, IsTheClinicAtOneMomentWhileADeskSells)
{
    // Large enough for several steps of the copying.
    clinic_.run(QStringLiteral("INSERT INTO tPSProperties (tpsps_Key, tpsps_Value) VALUES ('large', '%1')")
                    .arg(QString(9'000'000, u'x')));
    BusyDesk desk(clinic_.plainName());
    desk.waitForMore(5);
    int told = 0;
    backup::backUp(clinic_.address(), file("busy.backup"), [&](qint64, qint64) {
        desk.waitForMore(++told < 4 ? 3 : 0);
        return true;
    });
    desk.stop();
    EXPECT_GE(told, 4);
    EXPECT_EQ(files(), QStringList{QStringLiteral("busy.backup")});

    TestDatabase elsewhere(GetParam(), false);
    backup::restore(elsewhere.address(), file("busy.backup"));
    const int sold = elsewhere.value(written).toInt();
    EXPECT_GE(sold, 5);
    EXPECT_LT(sold, desk.sales()); // the desk was not held up
    const ado::ConnectionPtr restored = ado::Connection::open(elsewhere.address());
    for (const check::Query &query : check::queries())
        EXPECT_EQ(check::examine(*restored, query, 0ms).violations, 0) << query.title.toStdString();
    EXPECT_EQ(check::examineFile(*restored).violations, 0);
}

TEST_P(Backup, ComesBackUnderOpenDesksAndKeepsWhatWasThere)
{
    const QStringList before = contentOf(clinic_);
    backup::backUp(clinic_.address(), file("good.backup"));
    ado::Recordset orders;
    orders.Open(QStringLiteral("SELECT * FROM tPSOrderMaster WHERE OrdM_PK = 1"), clinic_.connection(),
                ado::CursorType::Keyset, ado::LockType::Optimistic);
    for (const char *damage : {"DELETE FROM tPSOrderDetail", "DELETE FROM tPSOrderMaster WHERE OrdM_PK < 300",
                               "UPDATE Customer SET name = '아무개', vip = NULL",
                               "INSERT INTO tPSOrderMaster (Cust_PK, OrdM_Date) VALUES (1, '2026-11-24')"})
        clinic_.run(QString::fromUtf8(damage));
    const QStringList damaged = contentOf(clinic_);

    const QString kept = backup::restore(clinic_.address(), file("good.backup"));
    EXPECT_EQ(joined(contentOf(clinic_)), joined(before));
    EXPECT_EQ(files().size(), 2) << joined(files());
    orders.Requery(); // the desk that was open all the time
    ASSERT_TRUE(orders.hasCurrent());
    orders.setValue("OrdM_ETCMemo", QStringLiteral("고침"));
    orders.Update();
    clinic_.connection()->Execute("INSERT INTO tPSOrderMaster (Cust_PK, OrdM_Date) VALUES (1, '2026-11-24')");
    EXPECT_EQ(clinic_.value("SELECT MAX(OrdM_PK) FROM tPSOrderMaster"), QStringLiteral("321"));

    backup::restore(clinic_.address(), kept);
    EXPECT_EQ(joined(contentOf(clinic_)), joined(damaged));
}

TEST_P(Backup, RefusesBeforeAnythingIsTouched)
{
    backup::backUp(clinic_.address(), file("good.backup"));
    const QByteArray good = read("good.backup");
    write("short.backup", good.left(good.size() * 2 / 3));
    write("notes.txt", QByteArray(5'000, 'x'));
    QByteArray torn = good;
    torn.replace(good.size() / 2, 3'000, QByteArray(3'000, '#'));
    write("torn.backup", torn);
    // Of the other engine, and of a database that lacks a column.
    TestDatabase other(GetParam() == ado::Engine::SQLite ? ado::Engine::PostgreSQL : ado::Engine::SQLite);
    backup::backUp(other.address(), file("other.backup"));
    TestDatabase older(GetParam());
    older.run("ALTER TABLE Customer DROP COLUMN vip");
    if (GetParam() == ado::Engine::SQLite)
        older.run(QStringLiteral("VACUUM INTO '%1'").arg(file("older.backup")));
    else
        ASSERT_EQ(
            QProcess::execute(QStringLiteral("pg_dump"), {QStringLiteral("-Fc"), QStringLiteral("-f"),
                                                          file("older.backup"), QStringLiteral("-d"), older.address()}),
            0);
    const QStringList before = contentOf(clinic_);
    const QStringList filesBefore = files();

    const auto restoring = [&](const char *name) {
        return refusal([&] { backup::restore(clinic_.address(), file(name)); });
    };
    EXPECT_THAT(restoring("none.backup"), testing::HasSubstr("읽을 수 없습니다"));
    EXPECT_THAT(restoring("notes.txt"), testing::HasSubstr("백업 파일이 아닙니다"));
    EXPECT_THAT(restoring("short.backup"), testing::HasSubstr("손상된"));
    EXPECT_THAT(restoring("torn.backup"), testing::HasSubstr("손상된"));
    EXPECT_THAT(restoring("older.backup"), testing::HasSubstr("한의원"));
    EXPECT_THAT(restoring("other.backup"), testing::HasSubstr("이 주소에 되돌릴 수 없습니다"));
    EXPECT_THAT(refusal([&] { backup::backUp(older.address(), file("older2.backup")); }),
                testing::HasSubstr("데이터베이스"));
    EXPECT_THAT(refusal([&] { backup::backUp(clinic_.address(), file("good.backup")); }),
                testing::HasSubstr("이미 있는"));
    EXPECT_THAT(refusal([&] { backup::backUp(clinic_.address(), file("no/such/folder")); }),
                testing::Not(testing::IsEmpty()));
    EXPECT_THAT(refusal([&] { backup::backUp(QStringLiteral("odbc:DSN=clinic"), file("x")); }),
                testing::HasSubstr("ODBC"));
    const backup::Progress stop = [](qint64, qint64) { return false; };
    EXPECT_THAT(refusal([&] { backup::backUp(clinic_.address(), file("stopped"), stop); }), testing::HasSubstr("중단"));
    EXPECT_EQ(joined(contentOf(clinic_)), joined(before));
    EXPECT_EQ(joined(files()), joined(filesBefore));
    EXPECT_EQ(read("good.backup"), good);

    EXPECT_THAT(refusal([&] { backup::restore(clinic_.address(), file("good.backup"), stop); }),
                testing::HasSubstr("중단"));
    EXPECT_EQ(joined(contentOf(clinic_)), joined(before));
}

TEST(BackupOfAFile, ReplacesADamagedClinicAndMakesAMissingOne)
{
    const QTemporaryDir folder;
    const auto address = [&](const char *name) {
        return QStringLiteral("sqlite:") + folder.filePath(QString::fromLatin1(name));
    };
    sample::makeClinic(address("clinic.db"), sample::Size::Small);
    backup::backUp(address("clinic.db"), folder.filePath("good.backup"));
    {
        QFile clinic(folder.filePath("clinic.db"));
        ASSERT_TRUE(clinic.open(QIODevice::ReadWrite));
        for (int page = 30; page < 45; ++page) {
            clinic.seek(page * 4096);
            clinic.write(QByteArray(4096, '#'));
        }
    }
    EXPECT_EQ(check::examineFile(*ado::Connection::open(address("clinic.db"))).violations > 0, true);
    EXPECT_ANY_THROW(backup::backUp(address("clinic.db"), folder.filePath("bad.backup")));
    EXPECT_TRUE(QFile::exists(backup::restore(address("clinic.db"), folder.filePath("good.backup"))));
    EXPECT_EQ(backup::restore(address("other.db"), folder.filePath("good.backup")), QString());
    for (const char *name : {"clinic.db", "other.db"}) {
        const ado::ConnectionPtr restored = ado::Connection::open(address(name));
        EXPECT_EQ(check::examineFile(*restored).violations, 0);
        EXPECT_EQ(
            check::examine(*restored, {{}, {}, QStringLiteral("SELECT OrdM_PK FROM tPSOrderMaster")}, 0ms).violations,
            320);
    }
    EXPECT_ANY_THROW(backup::restore(address("clinic.db"), folder.filePath("clinic.db")));
}
