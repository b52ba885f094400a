#include "tests/entry/EntryDesk.h"

#include <QHeaderView>
#include <QPlainTextEdit>
#include <QProcess>
#include <QScreen>
#include <QSplitter>
#include <QTimer>
#include <QTreeWidget>
#include <QWindow>

namespace {

class Life : public EntryDesk
{
protected:
    static QString setting(const char *key)
    {
        return registry::GetSetting(QStringLiteral("Zelvo Desk"), QStringLiteral("물품판매관리"), QLatin1String(key));
    }
    void expectCleanEnd(const QStringList &arguments) const
    {
        QProcess host;
        host.setProcessChannelMode(QProcess::MergedChannels);
        QProcessEnvironment surroundings = QProcessEnvironment::systemEnvironment();
        surroundings.insert(QStringLiteral("XDG_RUNTIME_DIR"), folder_.path());
        host.setProcessEnvironment(surroundings);
        host.start(besideTest("test_leaving_host"), arguments);
        EXPECT_TRUE(host.waitForFinished(60'000));
        EXPECT_EQ(host.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(host.exitCode(), 0);
        QStringList complaints = QString::fromUtf8(host.readAll()).split(u'\n', Qt::SkipEmptyParts);
        complaints.removeIf([](const QString &line) { return line.startsWith(u"This plugin does not support"); });
        EXPECT_EQ(complaints.join(u'\n').toStdString(), "");
    }
};

/// Works every control of the window as a curious hand does; dialogs and menus that open are closed again.
class CuriousHand
{
public:
    CuriousHand()
    {
        QObject::connect(&closer_, &QTimer::timeout, [] {
            if (QWidget *popup = QApplication::activePopupWidget())
                popup->close();
            else if (QWidget *dialog = QApplication::activeModalWidget())
                dialog->close();
        });
        closer_.start(5);
    }

    void workAll(QWidget *window)
    {
        auto *tabs = window->findChild<QTabWidget *>("c1tabMain");
        for (int tab : {0, 1, 0, 2, 3, 1, 0}) {
            tabs->setCurrentIndex(tab);
            // Fields first: what is typed meets the buttons.
            for (QWidget *control : window->findChildren<QWidget *>())
                workField(control);
            for (auto *button : window->findChildren<QAbstractButton *>()) {
                if (!button->isVisible() || !button->isEnabled())
                    continue;
                QTest::mouseClick(button, Qt::LeftButton);
                ++clicks;
            }
            QCoreApplication::processEvents();
        }
    }

    int clicks = 0;

private:
    static void workField(QWidget *control)
    {
        if (!control->isVisible() || !control->isEnabled())
            return;
        if (auto *grid = qobject_cast<QTableView *>(control)) {
            QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, QPoint(20, 8));
            QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, QPoint(20, 8));
            QTest::mouseClick(grid->horizontalHeader()->viewport(), Qt::LeftButton, {}, QPoint(20, 8));
            for (const Qt::Key key :
                 {Qt::Key_Down, Qt::Key_End, Qt::Key_Space, Qt::Key_Return, Qt::Key_Delete, Qt::Key_Escape})
                QTest::keyClick(grid, key);
        } else if (auto *tree = qobject_cast<QTreeWidget *>(control)) {
            for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Return, Qt::Key_End, Qt::Key_Return})
                QTest::keyClick(tree, key);
        } else if (qobject_cast<QLineEdit *>(control) || qobject_cast<QPlainTextEdit *>(control)
                   || qobject_cast<QComboBox *>(control)) {
            for (const Qt::Key key : {Qt::Key_Backspace, Qt::Key_Minus, Qt::Key_7, Qt::Key_Down, Qt::Key_Return})
                QTest::keyClick(control, key);
        }
    }

    QTimer closer_;
};

} // namespace

TEST_F(Life, ClosingKeepsTheLayoutAndGivesEverythingBackButTheConnection)
{
    fillShop();
    const long lent = database_.connection().use_count();
    sell();
    choose("tdbCustSaleMaster", 0);
    tabs()->setCurrentIndex(1);
    tabs()->setCurrentIndex(0);
    EXPECT_GT(database_.connection().use_count(), lent + 1);
    auto *columns = at<QSplitter>("c1elaMain");
    QList<int> widths = columns->sizes();
    widths[0] += 40;
    widths[1] -= 40;
    columns->setSizes(widths);
    widths = columns->sizes();
    window()->move(31, 17);
    const QPoint place = window()->geometry().topLeft(); // of the inner area: the frame is the desktop's
    close();

    EXPECT_FALSE(window()) << "the window is gone, not hidden";
    EXPECT_EQ(database_.connection().use_count(), lent) << "the lent connection is not kept";
    database_.connection()->Execute("UPDATE tPSOrderMaster SET OrdM_ETCMemo = '열려 있음'");
    EXPECT_EQ(setting("ColWidth_0").toInt(), widths[0]);
    EXPECT_EQ(setting("FormPos_x").toInt(), place.x());
    EXPECT_EQ(setting("FormPos_y").toInt(), place.y());

    // The sale comes back as it was left, the management entry does not.
    sell();
    EXPECT_EQ(at<QSplitter>("c1elaMain")->sizes(), widths);
    close();
    manage();
    EXPECT_NE(at<QSplitter>("c1elaMain")->sizes(), widths);
    EXPECT_NE(window()->pos(), QPoint(31, 17));
    EXPECT_EQ(said(), "");
}

TEST_F(Life, AMaximizedWindowStaysSoAndKeepsTheSizeThatItHadBefore)
{
    fillShop();
    manage();
    QTest::qWait(300);
    const QRect own = window()->geometry();
    // By hand: the desktop sends the size first, then the state.
    window()->windowHandle()->setGeometry(window()->screen()->availableGeometry());
    window()->windowHandle()->setWindowState(Qt::WindowMaximized);
    QTest::qWait(300);
    for (const char *entry : {"showProductSale", "showProductSaleManage"}) {
        enter(entry);
        EXPECT_TRUE(window()->isMaximized()) << entry;
    }
    close();
    EXPECT_EQ(setting("IsFormMaximized").toInt(), 2);
    EXPECT_EQ(QRect(setting("FormPos_x").toInt(), setting("FormPos_y").toInt(), setting("FormWidth").toInt(),
                    setting("FormHeight").toInt()),
              own);
}

TEST_F(Life, OpensAgainAtOnceAfterClosing)
{
    fillShop();
    sell();
    const QPointer<QWidget> first = window();
    first->close(); // the window is going, but not gone: the event loop has not turned
    QVariantList again = arguments();
    automation::call(*sale_, QStringLiteral("showProductSale"), again);
    int visible = 0;
    for (const QWidget *one : QApplication::topLevelWidgets())
        visible += one->objectName() == QLatin1String("frmMain") && one->isVisible();
    EXPECT_EQ(visible, 1);
    settle();
    EXPECT_FALSE(first);
    ASSERT_TRUE(isUp());
    EXPECT_EQ(rowsOf("tdbCustSaleMaster"), 2);
}

TEST_F(Life, SurvivesEveryControl)
{
    const auto workThrough = [this](const char *what) {
        SCOPED_TRACE(what);
        CuriousHand hand;
        hand.workAll(window());
        EXPECT_TRUE(isUp());
        EXPECT_EQ(boxes_.texts().filter(QStringLiteral("프로그램 오류")).join(u'\n').toStdString(), "");
        EXPECT_GT(hand.clicks, 40);
        close();
    };
    QVariantList nobody = arguments();
    nobody[0] = QVariant();
    call("showProductSale", nobody);
    workThrough("an entry without a connection");
    EXPECT_FALSE(call("Foo").isValid());
    EXPECT_TRUE(isUp());
    workThrough("the bare window");
    sell();
    workThrough("an empty shop");
    manage();
    boxes_.answers.assign(1000, controls::Answer::Yes);
    workThrough("an empty shop, every question answered with yes");
    fillShop();
    sell({.key = 99});
    workThrough("a customer without orders");
    sell();
    boxes_.answers.assign(1000, controls::Answer::Yes);
    workThrough("a shop at work");
}

TEST_F(Life, EndsWithAHostThatDoesNotWaitForIt)
{
    fillShop();
    int round = 0;
    for (const char *entry : {"showProductSale", "showProductSaleManage"}) {
        for (const char *way : {"quit", "loop ends", "return", "exit", "object first", "connection first"}) {
            SCOPED_TRACE(std::string(entry) + ", " + way);
            const QString store = folder_.filePath(QStringLiteral("host-%1").arg(++round));
            ASSERT_TRUE(QDir().mkpath(store));
            expectCleanEnd({QLatin1String(way), database_.address(), store, QLatin1String(entry)});
            if (std::string(way) == "exit")
                continue; // nothing runs any more
            registry::setStoreFolder(store);
            EXPECT_NE(setting("FormWidth").toInt(), 0) << "the layout is kept";
        }
    }
}

TEST_F(Life, EndsWithAHostWhoseGlobalHoldsTheConnectionInTheMiddleOfASaving)
{
    const QString store = folder_.filePath(QStringLiteral("host"));
    ASSERT_TRUE(QDir().mkpath(store));
    for (const ado::Engine engine : allEngines) {
        TestDatabase database(engine);
        for (const char *way : {"global, quit", "global, exit", "global, an error"}) {
            SCOPED_TRACE(database.address().toStdString() + ", " + way);
            expectCleanEnd({QLatin1String(way), database.address(), store, QStringLiteral("showProductSale")});
        }
        EXPECT_EQ(database.value("SELECT COUNT(*) FROM t_HospSetup WHERE HS_KEY = 'unsaved'"), "0");
    }
}

TEST_F(Life, EndsNotWithoutAWordWhereAPlainSlotRaisesAnError)
{
    QProcess host;
    host.setProcessChannelMode(QProcess::MergedChannels);
    host.start(besideTest("test_leaving_host"), {QStringLiteral("plain slot")});
    EXPECT_TRUE(host.waitForFinished(60'000));
    EXPECT_EQ(host.exitStatus(), QProcess::CrashExit);
    const QString said = QString::fromUtf8(host.readAll());
    EXPECT_TRUE(said.contains(QStringLiteral("가져오지 못했습니다.\n\n프로그램을 종료합니다."))) << said.toStdString();
    EXPECT_TRUE(said.contains(QStringLiteral("error -2147217900 in [] raised main.cpp"))) << said.toStdString();
}
