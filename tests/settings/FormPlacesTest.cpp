#include "settings/clsFormPosition.h"
#include "settings/clsFormSizePosSetting.h"
#include "settings/clsWindowPostion.h"
#include "settings/modFormLocate.h"

#include "platform/registry/AppSettings.h"

#include <QApplication>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>
#include <QWindow>

#include <gtest/gtest.h>

namespace {

QRect screen()
{
    return QApplication::primaryScreen()->availableGeometry();
}

class RememberedWindow : public testing::Test
{
protected:
    RememberedWindow()
    {
        registry::setStoreFolder(store_.path());
        for (int column = 0; column < 3; ++column)
            columns_.addWidget(new QWidget);
        columns_.setChildrenCollapsible(false);
        columns_.resize(600 + 2 * columns_.handleWidth(), 200);
        columns_.setSizes({200, 200, 200});
        columns_.show(); // sizes hold once it is laid out
        window_.setGeometry(30, 40, 400, 300);
        window_.show();
    }
    ~RememberedWindow() override { registry::setStoreFolder(QString()); }

    QTemporaryDir store_;
    clsFormSizePosSetting setting_;
    QWidget window_;
    QSplitter columns_;
};

} // namespace

TEST_F(RememberedWindow, KeepsTheWidthsOfColumnsThatWereNeverShown)
{
    setting_.FirstColWidth(QStringLiteral("370"));
    saveMainWindowLayout(window_, nullptr);
    EXPECT_EQ(setting_.FirstColWidth(), QStringLiteral("370"));
    EXPECT_EQ(setting_.FormWidth(), QStringLiteral("400"));
}

TEST_F(RememberedWindow, StaysAsDesignedWhereNothingOrNoNumberIsStored)
{
    restoreMainWindowLayout(window_, columns_);
    setting_.FormPos_x(QStringLiteral("왼쪽"));
    setting_.FormWidth(QStringLiteral("12a"));
    setting_.FirstColWidth(QStringLiteral("넓게"));
    setting_.SecondColWidth(QStringLiteral("-5"));
    setting_.FormIsMaximized(QStringLiteral("yes"));
    restoreMainWindowLayout(window_, columns_);
    EXPECT_EQ(window_.geometry(), QRect(30, 40, 400, 300));
    EXPECT_EQ(columns_.sizes(), (QList<int>{200, 200, 200}));
    EXPECT_FALSE(window_.isMaximized());

    setting_.FirstColWidth(QStringLiteral("2147483647")); // no screen is as wide, and two of them are no number
    setting_.SecondColWidth(QStringLiteral("2147483647"));
    restoreMainWindowLayout(window_, columns_);
    EXPECT_EQ(columns_.sizes(), (QList<int>{200, 200, 200}));
}

TEST_F(RememberedWindow, HonoursEachStoredWidthAlone)
{
    const struct
    {
        const char *first, *second, *third;
        QList<int> widths;
    } cases[] = {
        {"150", "", "", {150, 200, 250}},      {"", "150", "", {200, 150, 250}},    {"", "", "150", {200, 250, 150}},
        {"150", "-5", "130", {150, 320, 130}}, {"100", "320", "", {100, 320, 180}},
    };
    for (const auto &entry : cases) {
        columns_.setSizes({200, 200, 200});
        setting_.FirstColWidth(QLatin1String(entry.first));
        setting_.SecondColWidth(QLatin1String(entry.second));
        setting_.ThirdColWidth(QLatin1String(entry.third));
        restoreMainWindowLayout(window_, columns_);
        EXPECT_EQ(columns_.sizes(), entry.widths);
    }
}

TEST_F(RememberedWindow, IsBroughtOntoTheScreenAndCutToIt)
{
    const struct
    {
        const char *what;
        int x, y, width, height;
    } cases[] = {
        {"right and below", 100000, 100000, 400, 300},
        {"left and above", -100000, -100000, 400, 300},
        {"half off the right edge", screen().right() - 50, 40, 400, 300},
        {"larger than the screen", 10, 10, 100000, 100000},
    };
    const int frame = window_.frameGeometry().width() - window_.width();
    for (const auto &entry : cases) {
        setting_.FormPos_x(QString::number(entry.x));
        setting_.FormPos_y(QString::number(entry.y));
        setting_.FormWidth(QString::number(entry.width));
        setting_.FormHeight(QString::number(entry.height));
        restoreMainWindowLayout(window_, columns_);
        EXPECT_TRUE(screen().contains(window_.frameGeometry())) << entry.what;
        EXPECT_EQ(window_.frameGeometry().width(), std::min(entry.width + frame, screen().width())) << entry.what;
    }
}

TEST_F(RememberedWindow, ComesBackMaximizedButNeverMinimized)
{
    window_.setWindowState(Qt::WindowMaximized);
    saveMainWindowLayout(window_, &columns_);
    EXPECT_EQ(setting_.FormIsMaximized(), QStringLiteral("2"));
    EXPECT_EQ(setting_.FormWidth(), QStringLiteral("400")); // what it goes back to
    window_.setWindowState(Qt::WindowNoState);
    restoreMainWindowLayout(window_, columns_);
    EXPECT_TRUE(window_.isMaximized());

    window_.setWindowState(Qt::WindowMinimized);
    saveMainWindowLayout(window_, &columns_);
    EXPECT_EQ(setting_.FormIsMaximized(), QStringLiteral("0"));
    for (const char *state : {"0", "1"}) {
        setting_.FormIsMaximized(QLatin1String(state));
        QWidget fresh;
        fresh.show();
        restoreMainWindowLayout(fresh, columns_);
        EXPECT_FALSE(fresh.isMinimized() || fresh.isMaximized()) << state;
    }
}

// A desktop sends the new size ahead of the new state, and minimizes without a word before.
TEST_F(RememberedWindow, KnowsItsOwnSizeWhateverTheDesktopMadeOfIt)
{
    watchNormalPlace(window_);
    const QRect own(55, 66, 420, 310);
    const struct
    {
        const char *what;
        QRect sent;
        QList<Qt::WindowState> states;
        const char *stored;
    } cases[] = {
        {"maximized", screen(), {Qt::WindowMaximized}, "2"},
        {"minimized", own, {Qt::WindowMinimized}, "0"},
        {"maximized, then minimized", screen(), {Qt::WindowMaximized, Qt::WindowMinimized}, "2"},
    };
    for (const auto &entry : cases) {
        SCOPED_TRACE(entry.what);
        window_.windowHandle()->setWindowStates(Qt::WindowNoState);
        QApplication::processEvents();
        window_.setGeometry(own);
        QTest::qWait(300);
        window_.windowHandle()->setGeometry(entry.sent);
        for (const Qt::WindowState state : entry.states) {
            window_.windowHandle()->setWindowState(state);
            QTest::qWait(300);
        }
        saveMainWindowLayout(window_, nullptr);
        EXPECT_EQ(setting_.FormIsMaximized(), QLatin1String(entry.stored));
        EXPECT_EQ(QRect(setting_.FormPos_x().toInt(), setting_.FormPos_y().toInt(), setting_.FormWidth().toInt(),
                        setting_.FormHeight().toInt()),
                  own);
    }
}

// The desktop gives the window its size after the widths were set; they are set again until it has settled.
TEST_F(RememberedWindow, KeepsItsColumnsWhileTheDesktopSizesIt)
{
    setting_.FirstColWidth(QStringLiteral("150"));
    setting_.SecondColWidth(QStringLiteral("130"));
    QSplitter columns;
    for (int stretch : {0, 1, 1}) {
        columns.addWidget(new QWidget);
        columns.setStretchFactor(columns.count() - 1, stretch);
    }
    columns.resize(500, 200);
    columns.show();
    restoreMainWindowLayout(window_, columns);
    for (int width : {700, 500, 900}) {
        columns.resize(width, 200);
        EXPECT_EQ(columns.sizes().mid(0, 2), (QList<int>{150, 130})) << width;
    }
    ASSERT_TRUE(QTest::qWaitFor([&] { return !columns.findChild<QObject *>("settling"); }));
    columns.resize(700, 200); // by the user
    EXPECT_NE(columns.sizes().value(1), 130);

    restoreMainWindowLayout(window_, columns);
    columns.setSizes({190, 100, 390});
    emit columns.splitterMoved(190, 1); // dragged at once
    columns.resize(800, 200);
    EXPECT_EQ(columns.sizes().value(0), 190);
}

TEST(FormPosition, PlacesControlsInTheirContainer)
{
    const clsFormPosition position;
    QWidget container;
    container.resize(200, 100);
    QWidget small(&container), second(&container), large(&container);
    small.resize(100, 20);
    second.resize(50, 30);
    large.resize(300, 140);

    position.CenterControl(container, small);
    EXPECT_EQ(small.pos(), QPoint(50, 40));
    position.CenterControl(container, large);
    EXPECT_EQ(large.pos(), QPoint(0, 0));
    position.CenterForm(container, large); // the form's routine lets it hang over
    EXPECT_EQ(large.pos(), QPoint(-50, -20));

    position.CenterTwoControl(container, small, second);
    EXPECT_EQ(small.pos(), QPoint(50, 25));
    EXPECT_EQ(second.pos(), QPoint(75, 45));
    position.CenterTwoControl(container, large, second);
    EXPECT_EQ(large.pos(), QPoint(0, 0));
    EXPECT_EQ(second.pos(), QPoint(75, 140));
}

TEST(FormPosition, PlacesWindows)
{
    const clsFormPosition position;
    QWidget mainForm, form;
    mainForm.setGeometry(100, 50, 400, 300);
    form.resize(200, 100);
    position.CenterMain(mainForm, form);
    EXPECT_EQ(form.pos(), mainForm.pos() + QPoint(100, 100));
    EXPECT_EQ(form.size(), QSize(200, 100));
    position.CenterMain(mainForm, form, 0.25F);
    EXPECT_EQ(form.size(), QSize(100, 75));

    position.CenterScreen(form, 0.5F);
    EXPECT_EQ(form.size(), screen().size() / 2);
    EXPECT_LE((form.frameGeometry().center() - screen().center()).manhattanLength(), 2);

    form.resize(150, 100);
    position.LocateFormBottomRight(mainForm, form);
    EXPECT_EQ(form.pos(), QPoint(250, 200));
    form.resize(500, 100); // wider than the reference: the screen's edge
    position.LocateFormBottomRight(mainForm, form);
    EXPECT_EQ(form.pos(), QPoint(screen().width() - 500, 200));
}

TEST(WindowPostion, TellsTheInnerCornerInTwips)
{
    QWidget window;
    window.setGeometry(100, 60, 300, 200);
    QWidget button(&window);
    button.move(20, 10);
    window.show();
    const clsWindowPostion position;
    ASSERT_EQ(QApplication::primaryScreen()->logicalDotsPerInchX(), 96);
    const int perPixel = 15;

    qint32 x = 0, y = 0;
    position.GetScreenPosition(button, x, y);
    EXPECT_EQ(QPoint(x, y), QPoint(120, 70) * perPixel);
    EXPECT_EQ(position.pixelsFromTwips(button, x + 255, y + 1395), QPoint(120, 70) + QPoint(255, 1395) / perPixel);

    EXPECT_TRUE(position.GetScreenPosition(window.winId(), x, y));
    EXPECT_EQ(QPoint(x, y), QPoint(100, 60) * perPixel);
    EXPECT_FALSE(position.GetScreenPosition(WId(0x7ffffff1), x, y));
    EXPECT_EQ(QPoint(x, y), QPoint(0, 0));

    QCursor::setPos(33, 44);
    position.GetCursorPosition(x, y);
    EXPECT_EQ(QPoint(x, y), QPoint(33, 44));
}
