#include "platform/automation/Automation.h"
#include "session/modGlobalVars.h"
#include "statistics/StatisticsPane.h"
#include "tests/support/MessageRecorder.h"
#include "tests/support/TestDatabase.h"

#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QLibraryInfo>
#include <QProcess>
#include <QPushButton>
#include <QStandardPaths>
#include <QTableView>
#include <QTest>
#include <QTreeWidget>
#include <QWindow>

namespace {

const QString failureText = QStringLiteral("통계 패키지 구성요소가 제대로 설치되어 있지 않습니다.\r"
                                           "다시 시도해 보시고 오류가 지속되면 개발사로 문의하십시오.");

class Launcher : public testing::Test
{
protected:
    Launcher()
    {
        automation::classRegister::setFile(folder_.filePath("classes.ini"));
        gcnnMasterDB = database_.connection();
        qApp->setProperty("starts", 0);
        behave("good");
        pane_.resize(900, 500);
        pane_.show();
        qApp->setProperty("caller", qlonglong(pane_.winId()));
    }
    ~Launcher() override
    {
        gcnnMasterDB.reset();
        automation::classRegister::setFile({});
    }

    static void install()
    {
        automation::classRegister::registerLibrary(QCoreApplication::applicationDirPath()
                                                   + QStringLiteral("/test_reports"));
    }
    static void behave(const char *how) { qApp->setProperty("behaviour", QString::fromLatin1(how)); }
    static int starts() { return qApp->property("starts").toInt(); }

    void click(const QString &caption)
    {
        QTreeWidget *tree = pane_.tree();
        const QList<QTreeWidgetItem *> found = tree->findItems(caption, Qt::MatchExactly | Qt::MatchRecursive);
        ASSERT_EQ(found.size(), 1);
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(found.front()).center());
    }
    /// Texts of the windows on show.
    QString shown() const
    {
        QStringList texts;
        const QList<QLabel *> reports = pane_.findChildren<QLabel *>(QStringLiteral("report"));
        for (const QLabel *report : reports)
            texts << report->text() + (report->isVisible() ? QString() : QStringLiteral(" (hidden)"));
        return texts.join(QLatin1Char(','));
    }

    std::string nodes() const
    {
        QStringList lines;
        for (QTreeWidgetItemIterator node(pane_.tree()); *node; ++node)
            lines << ((*node)->parent() ? (*node)->parent()->text(0) + QStringLiteral(" / ") : QString())
                         + (*node)->text(0)
                         + ((*node)->childCount() > 0 && !(*node)->isExpanded() ? QStringLiteral(" (closed)")
                                                                                : QString());
        return lines.join(u'\n').toStdString();
    }

    QTemporaryDir folder_;
    TestDatabase database_{ado::Engine::SQLite};
    MessageRecorder boxes_;
    StatisticsPane pane_;
};

const QString firstReport = QStringLiteral("기간별 매출 통계");
const QString secondReport = QStringLiteral("물품별 매출 통계");

} // namespace

TEST_F(Launcher, GroupsItsReports)
{
    pane_.buildStatisticsTree();
    EXPECT_EQ(nodes(), "매출 관련 통계\n"
                       "매출 관련 통계 / 기간별 매출 통계\n"
                       "매출 관련 통계 / 물품별 매출 통계\n"
                       "수납 관련 통계\n"
                       "수납 관련 통계 / 기간별 수납 통계\n"
                       "통합 통계\n"
                       "통합 통계 / 일일 통계\n"
                       "통합 통계 / 재고 통계");
}

TEST_F(Launcher, PutsTheClinicsOwnReportsBehindTheToldOnes)
{
    QFile list(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + "/zelvo-reports.txt");
    const auto listed = [&](const QByteArray &lines) {
        ASSERT_TRUE(list.open(QIODevice::WriteOnly) && list.write(lines) == lines.size());
        list.close();
    };
    const auto *remarks = pane_.findChild<QLabel *>("lblReportRemarks");
    install();
    automation::classRegister::registerLibrary(QCoreApplication::applicationDirPath() + "/ClinicWeekdays");
    database_.run("INSERT INTO tPSOrderMaster (Cust_PK, OrdM_Date, OrdM_Total) VALUES (1, '2026-11-25', 38000)");

    listed("\xEF\xBB\xBF# 제목 | 묶음 | 식별자\r\n요일별 매출 통계 | 매출 관련 통계 | "
           "ClinicWeekdays.clsClinicWeekdays\r\n");
    pane_.showStatisticsTab();
    EXPECT_FALSE(remarks->isVisibleTo(&pane_));
    click(QStringLiteral("요일별 매출 통계"));
    const auto *table = pane_.findChild<QTableView *>("tblReport");
    ASSERT_TRUE(table);
    EXPECT_TRUE(QTest::qWaitFor([&] { return table->model()->rowCount() == 7; }));
    EXPECT_EQ(table->model()->index(2, 2).data().toString(), "38,000"); // a Wednesday
    EXPECT_TRUE(boxes_.messages.isEmpty());

    listed("한 칸\n제목 | 묶음 |\n제목 | 묶음 | Vanto\n재고 | 통합 통계 | vantostock.clsVANTOStock\n"
           "단골 | 우리 통계 | Regulars.clsRegulars\n또 단골 | 우리 통계 | Regulars.clsRegulars\n");
    pane_.showStatisticsTab();
    EXPECT_EQ(nodes().substr(nodes().rfind("재고")), "재고 통계\n우리 통계\n우리 통계 / 단골");
    EXPECT_EQ(remarks->text(), "확인할 통계 등록: 6건");
    EXPECT_TRUE(remarks->toolTip().contains("zelvo-reports.txt 5번째 줄: 설치되지 않은 통계: Regulars.clsRegulars"))
        << remarks->toolTip().toStdString();
    click(QStringLiteral("단골"));
    ASSERT_EQ(boxes_.messages.size(), 1);
    EXPECT_EQ(boxes_.messages[0].text, failureText);

    listed("요일 | 통계 | ClinicWeekdays.clsClinicWeekdays\n\xC0\xE7"); // not the UTF-8 that it has to be
    pane_.showStatisticsTab();
    EXPECT_EQ(remarks->text(), "확인할 통계 등록: 1건");
    EXPECT_EQ(nodes().substr(nodes().rfind("재고")), "재고 통계");
    list.remove();
}

TEST_F(Launcher, TellsOnceWhenNothingIsInstalledAndTriesAgainOnTheNextClick)
{
    pane_.showStatisticsTab();
    ASSERT_EQ(boxes_.messages.size(), 1);
    EXPECT_EQ(boxes_.messages[0].text, failureText);
    EXPECT_EQ(boxes_.messages[0].title, QStringLiteral("통계 실행 오류"));
    EXPECT_EQ(boxes_.messages[0].flags, 64);
    EXPECT_EQ(shown(), QString());

    install();
    click(firstReport);
    EXPECT_EQ(boxes_.messages.size(), 1);
    EXPECT_EQ(shown(), QStringLiteral("good"));
}

TEST_F(Launcher, KeepsTheReportOnShowUntilAnotherIsClicked)
{
    install();
    pane_.showStatisticsTab();
    const QPointer<QLabel> first = pane_.findChild<QLabel *>("report");
    click(firstReport);
    click(QStringLiteral("통합 통계"));
    pane_.showStatisticsTab();
    EXPECT_EQ(starts(), 1);
    EXPECT_TRUE(first);

    behave("second");
    click(secondReport);
    EXPECT_FALSE(first);
    EXPECT_EQ(shown(), QStringLiteral("second"));
    pane_.showStatisticsTab(); // coming back shows the first anew
    EXPECT_EQ(starts(), 3);
}

TEST_F(Launcher, OutlivesABadComponent)
{
    install();
    for (const char *behaviour : {"runtime error", "foreign error", "number thrown", "no handle", "nothing", "text",
                                  "no such window", "window of the caller", "no method"}) {
        SCOPED_TRACE(behaviour);
        boxes_.messages.clear();
        behave("good");
        pane_.showStatisticsTab();
        EXPECT_EQ(shown(), QStringLiteral("good"));

        behave(behaviour);
        click(secondReport);
        click(secondReport); // the failed one is not held to be on show
        EXPECT_EQ(boxes_.texts(), QStringList({failureText, failureText}));
        EXPECT_EQ(shown(), QString());

        behave("recovered");
        click(secondReport);
        EXPECT_EQ(boxes_.messages.size(), 2);
        EXPECT_EQ(shown(), QStringLiteral("recovered"));
    }
}

TEST_F(Launcher, ShowsAWindowThatIsNoWidget)
{
    if (QGuiApplication::platformName() != QStringLiteral("xcb"))
        GTEST_SKIP() << "needs a desktop that shows windows of others";
    install();
    QWindow window;
    qApp->setProperty("caller", qlonglong(window.winId()));
    behave("window of the caller");
    pane_.showStatisticsTab();
    click(firstReport);
    EXPECT_TRUE(boxes_.messages.isEmpty());
    EXPECT_EQ(starts(), 1) << "it is on show";
}

// All of the above once more in a program of its own on an X server, for which the toolkit takes any number for a window.
TEST(LauncherOnX, DoesTheSame)
{
    const QString server = QStandardPaths::findExecutable(QStringLiteral("Xvfb"));
    const QString desktop = QLibraryInfo::path(QLibraryInfo::PluginsPath) + QStringLiteral("/platforms/libqxcb.so");
    if (server.isEmpty() || !QFile::exists(desktop))
        GTEST_SKIP() << "there is no X server";
    QProcess display;
    display.start(server, {"-displayfd", "1", "-screen", "0", "1024x768x24", "-nolisten", "tcp"});
    ASSERT_TRUE(display.waitForReadyRead(20'000)) << display.readAllStandardError().toStdString();
    QProcessEnvironment surroundings = QProcessEnvironment::systemEnvironment();
    surroundings.insert("DISPLAY", ":" + QString::fromLatin1(display.readLine().trimmed()));
    surroundings.insert("QT_QPA_PLATFORM", "xcb");
    QProcess launcher;
    launcher.setProcessEnvironment(surroundings);
    launcher.setProcessChannelMode(QProcess::MergedChannels);
    launcher.start(QCoreApplication::applicationFilePath(), {"--gtest_filter=Launcher.*"});
    EXPECT_TRUE(launcher.waitForFinished(120'000));
    EXPECT_EQ(launcher.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(launcher.exitCode(), 0) << launcher.readAll().toStdString();
    display.terminate();
    display.waitForFinished();
}

TEST_F(Launcher, DoesNotStartAReportOverOneThatIsStarting)
{
    install();
    pane_.buildStatisticsTree();
    QPushButton clicker;
    QObject::connect(&clicker, &QPushButton::clicked, [this] { click(secondReport); });
    qApp->setProperty("clicker", QVariant::fromValue<QObject *>(&clicker));
    behave("runs events");
    click(firstReport);
    EXPECT_EQ(starts(), 1);
    EXPECT_EQ(shown(), QStringLiteral("runs events"));
    EXPECT_TRUE(boxes_.messages.isEmpty());
}

TEST_F(Launcher, LeavesAWindowAloneThatIsGoneAlready)
{
    install();
    pane_.showStatisticsTab();
    delete pane_.findChild<QLabel *>("report");
    behave("second");
    click(secondReport);
    EXPECT_EQ(shown(), QStringLiteral("second"));
    EXPECT_TRUE(boxes_.messages.isEmpty());
}

TEST_F(Launcher, StartsTheReportAnewWhenTheConnectionChanges)
{
    install();
    pane_.buildStatisticsTree();
    behave("tells its connection");
    click(secondReport);
    ASSERT_EQ(shown(), database_.address());
    TestDatabase other(ado::Engine::SQLite);
    pane_.connectionChanged();
    EXPECT_EQ(shown(), QString()) << "it would go on reading the other clinic";
    gcnnMasterDB = other.connection();
    QCoreApplication::processEvents();
    EXPECT_EQ(shown().toStdString(), other.address().toStdString());
}

TEST_F(Launcher, StoresTheConnectionThatComesBack)
{
    install();
    behave("takes the connection");
    pane_.showStatisticsTab();
    EXPECT_EQ(gcnnMasterDB, nullptr);
}
