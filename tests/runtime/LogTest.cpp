#include "platform/runtime/Attempt.h"
#include "platform/runtime/LogFile.h"
#include "platform/runtime/Operation.h"
#include "tests/support/LogLines.h"

#include <QDir>
#include <QFile>
#include <QSet>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <thread>
#include <vector>

using runtime::Attempt;
using runtime::ErrorNumber;
using runtime::LogFile;
using runtime::Operation;
using runtime::RuntimeError;

namespace {

const QDateTime noon(QDate(2026, 11, 25), QTime(12, 0));

[[noreturn]] void fail()
{
    const Operation operation("save order", {{"order", 17}, {"line", 3}});
    throw RuntimeError(ErrorNumber::Conflict, QStringLiteral("홍길동"), {"23505", QStringLiteral("key \"홍길동\"")});
}

QByteArrayList linesOf(const QString &file)
{
    QFile opened(file);
    EXPECT_TRUE(opened.open(QIODevice::ReadOnly)) << file.toStdString();
    QByteArrayList lines = opened.readAll().split('\n');
    EXPECT_EQ(lines.takeLast(), "") << "the last line is whole";
    return lines;
}

} // namespace

TEST(Log, TellsAnErrorOnceWithWhatWasDone)
{
    LogLines log;
    const Operation event(QStringLiteral("cmdSave"));
    const auto rethrown = [] {
        try {
            fail();
        } catch (const RuntimeError &) {
            runtime::trapped();
            throw;
        }
    };
    const auto inOtherWords = [&] {
        try {
            rethrown();
        } catch (const RuntimeError &error) {
            throw error.toldAs(ErrorNumber::Database, QStringLiteral("저장하지 못했습니다."));
        }
    };
    Attempt attempt;
    attempt(inOtherWords);
    attempt(inOtherWords); // another error, though of the same kind
    const QStringList lines = log.take();
    ASSERT_EQ(lines.size(), 2);
    for (const QString &line : lines) {
        EXPECT_TRUE(line.startsWith("zelvo.database error -2147217864 state 23505 in [cmdSave > save order order=17 "
                                    "line=3] raised LogTest.cpp:"))
            << line.toStdString();
        EXPECT_TRUE(line.endsWith(": key …")) << line.toStdString();
    }

    Attempt answer(Attempt::Failure::IsAnswer);
    answer(fail);
    EXPECT_TRUE(answer.failed());
    EXPECT_TRUE(log.take().isEmpty());
}

TEST(Log, OfAnotherLibrarysErrorNamesTheTypeOnly)
{
    LogLines log;
    const Operation event(QStringLiteral("treeStatItem"));
    try {
        throw std::out_of_range("홍길동");
    } catch (const std::exception &) {
        runtime::trapped();
    }
    const QStringList lines = log.take();
    ASSERT_EQ(lines.size(), 1);
    EXPECT_TRUE(lines[0].contains("out_of_range in [treeStatItem]")) << lines[0].toStdString();
    EXPECT_FALSE(lines[0].contains("홍길동"));
}

TEST(LogFile, KeepsTwoWeeksOfItsOwnAndTouchesNothingElse)
{
    const QTemporaryDir home;
    const QDir folder(home.filePath("state/zelvo-desk"));
    LogFile log(folder.path(), "zelvo-desk", "zelvo-desk 1.0");
    ASSERT_TRUE(log.begin(noon));
    EXPECT_EQ(QFile::permissions(folder.path()) & QFile::Permissions(0x0077), QFile::Permissions());
    const QString today = folder.filePath(LogFile::nameOf("zelvo-desk", noon.date()));
    EXPECT_EQ(QFile::permissions(today) & QFile::Permissions(0x0077), QFile::Permissions());

    const QStringList others{"zelvo-desk-pc-2026-11-13.log", // the fourteenth day
                             "zelvo-desk-pc-2026-11-01.log.old",
                             "zelvo-desk-pc-2026-13-01.log",
                             "zelvo-desk-2026-11-01.log",
                             "old-zelvo-desk-pc-2026-11-01.log",
                             "notes.txt"};
    for (const QString &name : others + QStringList{"zelvo-desk-pc-2026-11-12.log", "zelvo-desk-pc-2020-01-01.log"})
        ASSERT_TRUE(QFile(folder.filePath(name)).open(QIODevice::WriteOnly));
    ASSERT_TRUE(folder.mkdir("zelvo-desk-pc-2020-01-02.log"));
    ASSERT_TRUE(log.write(noon.addSecs(11 * 3600), "warning before the turn of the day"));
    EXPECT_TRUE(folder.exists("zelvo-desk-pc-2020-01-01.log")); // only at the turn
    ASSERT_TRUE(log.write(noon.addDays(1), "warning after it"));

    const QString tomorrow = LogFile::nameOf("zelvo-desk", noon.date().addDays(1));
    const QStringList left = folder.entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    const QStringList expected =
        others + QStringList{QFileInfo(today).fileName(), tomorrow, "zelvo-desk-pc-2020-01-02.log"};
    EXPECT_EQ(QSet<QString>(left.begin(), left.end()), QSet<QString>(expected.begin(), expected.end()));
    for (const QString &file : {today, folder.filePath(tomorrow)}) {
        const QByteArrayList lines = linesOf(file);
        ASSERT_EQ(lines.size(), 2) << file.toStdString();
        EXPECT_TRUE(lines[0].endsWith("zelvo-desk 1.0")) << lines[0].constData();
    }
}

TEST(LogFile, HoldsWholeLinesOfAllWhoWrite)
{
    const QTemporaryDir folder;
    constexpr int writers = 4, each = 500;
    std::vector<std::thread> desks;
    for (int desk = 0; desk < writers; ++desk)
        desks.emplace_back([&folder, desk] {
            LogFile log(folder.path(), "zelvo-desk", "head");
            const QByteArray line(900, char('a' + desk));
            for (int count = 0; count < each; ++count)
                EXPECT_TRUE(log.write(noon, line));
        });
    for (std::thread &desk : desks)
        desk.join();
    const QByteArrayList lines = linesOf(folder.filePath(LogFile::nameOf("zelvo-desk", noon.date())));
    EXPECT_EQ(lines.size(), writers * (each + 1));
    for (const QByteArray &line : lines) {
        const QByteArray said = line.mid(line.indexOf(QByteArray(" "), line.indexOf(" ") + 1) + 1);
        EXPECT_TRUE(said.endsWith("head") || said == QByteArray(900, said[0])) << line.constData();
    }
}

TEST(LogFile, TakesOurCategoriesInOneLineEachAndHandsTheOthersOn)
{
    static QStringList handedOn;
    const QTemporaryDir state;
    qputenv("XDG_STATE_HOME", QFile::encodeName(state.path()));
    const QtMessageHandler before = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext &, const QString &message) { handedOn << message; });
    runtime::keepLog({"zelvo-host", "2.1", "postgresql://desk@server/clinic"});
    const QString forged = QStringLiteral("said\nsecond\r\u2028third\u0085") + QChar(0) + QStringLiteral("\u202eend");
    qCWarning(runtime::programLog).noquote() << forged;
    qWarning("a host's own");
    qInstallMessageHandler(before);
    qunsetenv("XDG_STATE_HOME");

    // The host's handler sees both: it was there first.
    EXPECT_EQ(handedOn, (QStringList{forged, "a host's own"}));
    const QByteArrayList lines =
        linesOf(state.path() + "/zelvo-host/" + LogFile::nameOf("zelvo-host", QDate::currentDate()));
    ASSERT_EQ(lines.size(), 2);
    EXPECT_TRUE(lines[0].contains("zelvo-host 2.1, Qt ")) << lines[0].constData();
    EXPECT_TRUE(lines[0].endsWith("database postgresql://desk@server/clinic")) << lines[0].constData();
    EXPECT_TRUE(lines[1].endsWith("warning zelvo.program: said second  third   end")) << lines[1].constData();
}
