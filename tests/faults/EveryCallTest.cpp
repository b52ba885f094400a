#include "desk/backup/Backup.h"
#include "desk/check/Examination.h"
#include "desk/sample/Clinic.h"
#include "desk/schema/Upgrade.h"
#include "platform/runtime/RuntimeError.h"
#include "session/modGlobalVars.h"
#include "tests/desk/Earlier.h"
#include "tests/faults/Desk.h"
#include "tests/faults/FaultyDisk.h"
#include "tests/faults/PlainFile.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>

#include <gtest/gtest.h>

#include <sqlite3.h>

#include <algorithm>
#include <functional>

using faults::Call;
using faults::Fault;
using namespace std::chrono_literals;

namespace {

constexpr Fault allFaults[] = {
    {"opening", Call::Open, SQLITE_CANTOPEN}, // whatever the file
    {"reading", Call::Read, SQLITE_IOERR_READ},
    {"writing", Call::Write, SQLITE_IOERR_WRITE},
    {"writing, the disk being full", Call::Write, SQLITE_FULL},
    {"syncing", Call::Sync, SQLITE_IOERR_FSYNC},
    {"truncating", Call::Truncate, SQLITE_IOERR_TRUNCATE},
    {"locking", Call::Lock, SQLITE_IOERR_LOCK},
    {"locking what another has locked", Call::Lock, SQLITE_BUSY},
};

/// Of the calls that the work makes when nothing fails those that are to fail: all of them (ZELVO_FAULTS=all), or the
/// first, the last and some between.
std::vector<int> chosen(int calls)
{
    const int most = qEnvironmentVariable("ZELVO_FAULTS") == QLatin1String("all") ? calls : 3;
    std::vector<int> numbers;
    for (int at = 0; at < std::min(most, calls); ++at)
        numbers.push_back(1 + (calls <= most ? at : at * (calls - 1) / (most - 1)));
    return numbers;
}

/// What a work told.
struct Told
{
    bool saved = false;
    QString text; ///< of the error that left it

    bool unknown() const
    {
        return text.contains(QStringLiteral("알 수 없습니다")) || text.contains(QStringLiteral("저장되었는지"));
    }
};

Told told(const std::function<bool()> &work)
{
    const ado::AbandonedTransactions edgeOfEvent;
    try {
        return {work(), {}};
    } catch (const runtime::RuntimeError &error) {
        EXPECT_FALSE(error.description().isEmpty());
        return {false, error.description()};
    }
}

/// After a lost session a desk dials once a second.
Told toldOnceBack(const std::function<bool()> &work)
{
    Told answer = told(work);
    for (int tries = 0; !answer.saved && tries < 75; ++tries) {
        QThread::msleep(20);
        answer = told(work);
    }
    return answer;
}

/// The stands that a work goes through when nothing fails, by its commits.
std::vector<QByteArray> stepsOf(const Work &work, Desk &desk, const QString &file)
{
    struct Watch
    {
        QString file;
        std::vector<QByteArray> stands;
    } watch{file, {standOf(file)}};
    const auto committed = [](void *watching, sqlite3 *, const char *, int) {
        auto *const own = static_cast<Watch *>(watching);
        if (const QByteArray stand = standOf(own->file); stand != own->stands.back())
            own->stands.push_back(stand);
        return SQLITE_OK;
    };
    sqlite3_wal_hook(static_cast<sqlite3 *>(gcnnMasterDB->handle()), committed, &watch);
    faults::repair(); // counts anew
    EXPECT_TRUE(told([&] { return work.run(desk); }).saved);
    return watch.stands;
}

class EveryCall : public testing::TestWithParam<int>
{
protected:
    EveryCall() { makeClinic(template_); }
    ~EveryCall() override
    {
        faults::repair();
        RecordProperty("faults", injected_);
        std::printf("%d faults\n", injected_);
    }

    QString fresh()
    {
        const QDir folder(folder_.path());
        for (const QString &name : folder.entryList({"clinic*"}, QDir::Files))
            QFile::remove(folder.filePath(name));
        EXPECT_TRUE(QFile::copy(template_, file_));
        return file_;
    }
    /// Runs the work for each chosen call of each kind, which fails once or from then on; the work sets up, has `breakIt`
    /// called, and looks at what came.
    template <typename Run>
    void forEachFault(const faults::Calls &calls, Run run)
    {
        for (const Fault &fault : allFaults)
            for (const bool lasting : {true, false})
                for (const int nth : chosen(calls[std::size_t(fault.call)])) {
                    if (lasting && fault.code == SQLITE_BUSY)
                        break; // a lock that is never given back is waited for, so it is no matter of each call
                    SCOPED_TRACE(testing::Message() << fault.name << ", " << nth << (lasting ? " and on" : ""));
                    ++injected_;
                    run([&] { faults::breakAt(fault, nth, lasting); });
                }
    }

    const QTemporaryDir folder_;
    const QString template_ = folder_.filePath(QStringLiteral("template.db"));
    const QString file_ = folder_.filePath(QStringLiteral("clinic.db"));
    int injected_ = 0;
};

/// So that a work has to read.
void forgetPages()
{
    sqlite3_db_release_memory(static_cast<sqlite3 *>(gcnnMasterDB->handle()));
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Of, EveryCall, testing::Range(0, int(works().size())), [](const auto &work) {
    std::string name = works()[std::size_t(work.param)].name;
    std::erase_if(name, [](char sign) { return !std::isalnum(static_cast<unsigned char>(sign)); });
    return name;
});

TEST_P(EveryCall, ThatFailsIsToldTrulyAndLeavesAWholeStepAndTheNextTryGoesThrough)
{
    const Work &work = works()[std::size_t(GetParam())];
    std::vector<QByteArray> steps;
    faults::Calls calls{};
    {
        Desk desk(fresh());
        forgetPages();
        steps = stepsOf(work, desk, file_);
        calls = faults::calls();
        for (const check::Query &query : check::queries())
            EXPECT_EQ(check::examine(*gcnnMasterDB, query, 0ms).violations, 0) << query.title.toStdString();
    }
    ASSERT_EQ(int(steps.size()), work.steps + 1);
    forEachFault(calls, [&](auto breakIt) {
        QByteArray stand;
        {
            Desk desk(fresh());
            forgetPages();
            breakIt();
            const Told answer = told([&] { return work.run(desk); });
            faults::repair();
            stand = standOf(file_);
            const auto step = std::ranges::find(steps, stand);
            ASSERT_NE(step, steps.end()) << stand.toStdString();
            const bool whole = step == steps.end() - 1;
            EXPECT_TRUE(whole == answer.saved || answer.unknown() || !work.tells)
                << (whole ? "it is there" : "it is not there") << answer.text.toStdString();
            EXPECT_FALSE(gcnnMasterDB->inTransaction());
            const auto again = [&] {
                desk.readAnew();
                return step == steps.begin() ? work.run(desk) : works()[0].run(desk);
            };
            EXPECT_TRUE(toldOnceBack(again).saved);
            stand = step == steps.begin() ? steps.back() : standOf(file_);
        }
        EXPECT_EQ(standOf(file_).toStdString(), stand.toStdString());
        EXPECT_FALSE(stand.startsWith("DAMAGED"));
    });
}

namespace {

/// What a technician has the desk do, each all or nothing.
struct Task
{
    const char *name;
    const char *clinic; ///< the template that stands there before; none where it is null
    void (*run)(const QString &address, const QString &folder);
};

constexpr Task tasks[] = {
    {"make", nullptr,
     [](const QString &address, const QString &) { sample::makeClinic(address, sample::Size::Empty); }},
    {"back up", "template.db",
     [](const QString &address, const QString &folder) { backup::backUp(address, folder + "/clinic.backup"); }},
    {"restore", "other.db",
     [](const QString &address, const QString &folder) { backup::restore(address, folder + "/kept/good.backup"); }},
    {"restore to where there is none", nullptr,
     [](const QString &address, const QString &folder) { backup::restore(address, folder + "/kept/good.backup"); }},
    {"upgrade", "early.db",
     [](const QString &address, const QString &) { schema::upgrade(*ado::Connection::open(address)); }},
};

class EveryCallOfATask : public EveryCall
{
protected:
    EveryCallOfATask()
    {
        const QString address = QStringLiteral("sqlite:%1/").arg(folder_.path());
        QDir(folder_.path()).mkdir(QStringLiteral("kept"));
        backup::backUp(address + "template.db", folder_.filePath("kept/good.backup"));
        makeClinic(folder_.filePath("other.db"));
        const ado::ConnectionPtr other = ado::Connection::open(address + "other.db");
        // Keys that the backup does not know, and more pages than it has.
        other->Execute("INSERT INTO tPSOrderMaster (OrdM_PK, Cust_PK, OrdM_Date) VALUES (70, 1, '2026-11-24')");
        other->Execute(QStringLiteral("INSERT INTO tPSProperties (tpsps_Key, tpsps_Value) VALUES ('large', '%1')")
                           .arg(QString(90'000, u'x')));
        other->Execute("UPDATE t_DeskSchema SET DS_Generation = 5");
        const ado::ConnectionPtr early = ado::Connection::open(address + "early.db", true);
        for (const QString &statement : earlierStatements("1-first", ado::Engine::SQLite))
            early->Execute(statement);
        early->Execute("INSERT INTO Customer (name, birth) VALUES ('김환자', '1980-02-28')");
    }

    /// Every file that the task may have made or changed, with what stands in it.
    QByteArray stand() const
    {
        QByteArray all;
        for (const QString &name : QDir(folder_.path()).entryList({"clinic*"}, QDir::Files))
            if (name != "clinic.db-wal" && name != "clinic.db-shm")
                all += name.toUtf8() + '\n' + standOf(folder_.filePath(name));
        return all;
    }
    QStringList safetyCopies() const
    {
        return QDir(folder_.filePath("kept")).entryList({"*-before-restore-*.backup"}, QDir::Files);
    }
    void prepare(const Task &task)
    {
        const QDir kept(folder_.filePath("kept"));
        for (const QString &name : kept.entryList({"*-before-restore-*"}, QDir::Files))
            QFile::remove(kept.filePath(name));
        fresh();
        QFile::remove(file_);
        if (task.clinic) {
            ASSERT_TRUE(QFile::copy(folder_.filePath(QString::fromLatin1(task.clinic)), file_));
        }
    }
    Told tell(const Task &task) const
    {
        return told([&] {
            task.run(QStringLiteral("sqlite:") + file_, folder_.path());
            return true;
        });
    }
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Of, EveryCallOfATask, testing::Range(0, int(std::size(tasks))), [](const auto &task) {
    std::string name = tasks[std::size_t(task.param)].name;
    std::erase(name, ' ');
    return name;
});

TEST_P(EveryCallOfATask, ThatFailsLeavesAllOrNothingAndTheNextTryGoesThrough)
{
    const Task &task = tasks[std::size_t(GetParam())];
    prepare(task);
    const QByteArray before = stand();
    faults::repair();
    ASSERT_EQ(tell(task).text.toStdString(), "");
    const faults::Calls calls = faults::calls();
    const QByteArray after = stand();
    ASSERT_FALSE(before.contains("DAMAGED") || after.contains("DAMAGED"));
    const QStringList copies = safetyCopies();

    forEachFault(calls, [&](auto breakIt) {
        prepare(task);
        breakIt();
        const Told answer = tell(task);
        faults::repair();
        EXPECT_EQ(stand().toStdString(), (answer.saved ? after : before).toStdString()) << answer.text.toStdString();
        if (answer.saved) {
            EXPECT_EQ(safetyCopies().size(), copies.size());
        }
        for (const QString &copy : safetyCopies())
            EXPECT_FALSE(standOf(folder_.filePath("kept/" + copy)).contains("DAMAGED")) << copy.toStdString();
        if (!answer.saved) {
            EXPECT_EQ(tell(task).text.toStdString(), "");
        }
        EXPECT_EQ(stand().toStdString(), after.toStdString());
    });
}
