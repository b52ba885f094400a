#include "platform/controls/Appearance.h"
#include "platform/controls/DateEdit.h"
#include "platform/controls/MessageBox.h"
#include "platform/controls/Named.h"
#include "platform/controls/PushCheck.h"
#include "platform/controls/Stepper.h"
#include "platform/controls/TabWidget.h"
#include "platform/controls/Wheel.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/WheelTurns.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QCalendarWidget>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSpinBox>
#include <QTabBar>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

#include <gtest/gtest.h>

using controls::Answer;
using controls::MsgBox;

namespace {

/// Acts on the box that `open` brings up.
void inBox(const std::function<void()> &open, const std::function<void(QMessageBox &)> &act)
{
    EXPECT_TRUE(inDialog(open, [&](const DialogDriver &form) {
        auto *box = qobject_cast<QMessageBox *>(form.window());
        ASSERT_NE(box, nullptr);
        act(*box);
    }));
}

void press(QMessageBox &box, const QString &caption)
{
    const QList<QAbstractButton *> buttons = box.buttons();
    for (QAbstractButton *button : buttons) {
        if (button->text() == caption)
            return button->click();
    }
    FAIL() << caption.toStdString() << " is missing";
}

QString accessibleName(QWidget *widget)
{
    return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
}

} // namespace

TEST(MessageBox, EachButtonAndKeyGivesItsAnswer)
{
    using namespace controls;
    const struct
    {
        int flags;
        const char *caption;
        Qt::Key key;
        Answer answer;
    } cases[] = {
        {ConfirmOnly, "확인", {}, Answer::Confirm},
        {YesNo | QuestionIcon, "예", {}, Answer::Yes},
        {YesNo, "아니오", {}, Answer::No},
        {YesNoCancel | InformationIcon, "예", {}, Answer::Yes},
        {YesNoCancel, "아니오", {}, Answer::No},
        {YesNoCancel, "취소", {}, Answer::Cancel},
        {ConfirmOnly, nullptr, Qt::Key_Escape, Answer::Confirm},
        {YesNo, nullptr, Qt::Key_Escape, Answer::No},
        {YesNoCancel, nullptr, Qt::Key_Escape, Answer::Cancel},
        {YesNo, nullptr, Qt::Key_Return, Answer::Yes},
        {YesNo | SecondButtonDefault, nullptr, Qt::Key_Return, Answer::No},
        {YesNo, nullptr, Qt::Key_N, Answer::No},
        {YesNo | SecondButtonDefault, nullptr, Qt::Key_Y, Answer::Yes},
        {YesNoCancel, nullptr, Qt::Key_N, Answer::No},
        {YesNoCancel, nullptr, Qt::Key(u'ㅛ'), Answer::Yes}, // Y with Hangul on
    };
    for (const auto &row : cases) {
        Answer answer = {};
        inBox([&] { answer = MsgBox("계속 하시겠습니까?", row.flags); },
              [&](QMessageBox &box) {
                  if (row.caption)
                      return press(box, row.caption);
                  for (const bool down : {true, false}) // keyClick() knows Latin keys only
                      QTest::simulateEvent(&box, down, row.key, {}, {}, false);
              });
        EXPECT_EQ(answer, row.answer) << row.flags << ' ' << row.key;
    }
}

TEST(MessageBox, TextIsPlainWithItsLineBreaksAndTheTitleFallsToTheWindow)
{
    QWidget window;
    window.setWindowTitle(QStringLiteral("물품판매관리"));
    auto *box = new QLineEdit(&window);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));

    QStringList seen;
    const auto look = [&](QMessageBox &shown) {
        EXPECT_EQ(shown.textFormat(), Qt::PlainText);
        seen << shown.text() << shown.windowTitle();
    };
    inBox([&] { MsgBox("<b>첫째</b>\r둘째\r\n셋째\n", controls::InformationIcon, QString(), box); }, look);
    inBox([] { MsgBox("?"); }, look);
    inBox([] { MsgBox("!", 0, QStringLiteral("저장")); }, look);
    EXPECT_EQ(seen, (QStringList{QStringLiteral("<b>첫째</b>\n둘째\n셋째\n"), window.windowTitle(), QStringLiteral("?"),
                                 window.windowTitle(), QStringLiteral("!"), QStringLiteral("저장")}));
}

TEST(MessageBox, GivesTheAnswerOfEscWhenItsWindowGoesUnderIt)
{
    using namespace controls;
    const struct
    {
        int flags;
        Answer answer;
    } cases[] = {
        {ConfirmOnly, Answer::Confirm},
        {YesNo, Answer::No},
        {YesNoCancel, Answer::Cancel},
    };
    for (const auto &row : cases) {
        auto *window = new QWidget;
        window->show();
        QTimer::singleShot(0, [window] { delete window; });
        EXPECT_EQ(MsgBox("계속 하시겠습니까?", row.flags, QString(), window), row.answer) << row.flags;
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    }
}

/// A page that scrolls, with a control of each kind that a wheel turns and a text box that has the focus.
class WheelPage : public testing::Test
{
protected:
    WheelPage()
    {
        auto *page = new QWidget;
        page->resize(200, 2000);
        int y = 10;
        for (QWidget *control : QWidgetList{box_, date_, list_, number_, stepper_}) {
            control->setParent(page);
            control->move(10, y += 30);
        }
        list_->addItems({QStringLiteral("현금"), QStringLiteral("카드")});
        area_.setWidget(page);
        area_.resize(240, 240);
        area_.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&area_));
        box_->setFocus();
    }
    /// "turned", "scrolled" or both.
    std::string wheelOver(QWidget *control)
    {
        const QString before = shownBy(control);
        area_.verticalScrollBar()->setValue(0);
        turnWheel(control);
        return std::string(shownBy(control) != before ? "turned" : "")
               + (area_.verticalScrollBar()->value() > 0 ? "scrolled" : "");
    }

    QLineEdit *box_ = new QLineEdit;
    controls::DateEdit *date_ = new controls::DateEdit;
    QComboBox *list_ = controls::withGuardedWheel(new QComboBox);
    QSpinBox *number_ = controls::withGuardedWheel(new QSpinBox);
    controls::Stepper *stepper_ = new controls::Stepper(QStringLiteral("ud"));
    QScrollArea area_;
};

TEST_F(WheelPage, OnlyTheControlWithTheFocusIsTurnedTheOthersAreScrolledPast)
{
    number_->setValue(50);
    QObject::connect(stepper_, &controls::Stepper::down, [] { FAIL() << "stepped"; });
    for (QWidget *control : QWidgetList{date_, list_, number_, stepper_}) {
        SCOPED_TRACE(control->metaObject()->className());
        EXPECT_EQ(wheelOver(control), "scrolled");
        EXPECT_TRUE(box_->hasFocus());
        if (control == stepper_)
            continue;
        control->setFocus();
        EXPECT_EQ(wheelOver(control), "turned");
        control->setEnabled(false);
        EXPECT_EQ(wheelOver(control), "scrolled");
        box_->setFocus();
    }
}

TEST_F(WheelPage, ADateThatIsReadOnlyOrLockedIsNotTurnedWithTheFocusEither)
{
    date_->setFocus();
    date_->setReadOnly(true);
    EXPECT_EQ(wheelOver(date_), "scrolled");
    date_->setReadOnly(false);
    controls::lockWheel(date_, true);
    EXPECT_EQ(wheelOver(date_), "scrolled");
    controls::lockWheel(date_, false);
    EXPECT_EQ(wheelOver(date_), "turned");
}

TEST_F(WheelPage, ADateOpensOnItsDay)
{
    date_->setDate(QDate(2026, 11, 24));
    for (const Qt::FocusReason reason : {Qt::TabFocusReason, Qt::BacktabFocusReason, Qt::OtherFocusReason}) {
        box_->setFocus();
        date_->setFocus(reason);
        QTest::keyClick(date_, Qt::Key_Up);
        EXPECT_EQ(date_->sectionText(QDateEdit::YearSection) + date_->sectionText(QDateEdit::MonthSection), "202611");
    }
    EXPECT_EQ(date_->date(), QDate(2026, 11, 27));
}

TEST(DateEdit, DropsDownAKoreanCalendarThatIsMadeNoSooner)
{
    controls::DateEdit date;
    date.show();
    EXPECT_FALSE(date.findChild<QCalendarWidget *>()) << "a window full of controls, in each picker";
    QTest::mouseClick(&date, Qt::LeftButton, {}, {date.width() - 8, date.height() / 2});
    auto *calendar = date.findChild<QCalendarWidget *>();
    ASSERT_TRUE(calendar && calendar->isVisible());
    EXPECT_EQ(calendar->locale().language(), QLocale::Korean);
    EXPECT_EQ(calendar->firstDayOfWeek(), Qt::Sunday);
    EXPECT_EQ(calendar->verticalHeaderFormat(), QCalendarWidget::NoVerticalHeader);
    EXPECT_EQ(calendar->weekdayTextFormat(Qt::Sunday).foreground().color(), controls::ink(controls::Ink::Negative));
    calendar->window()->close();
    controls::DateEdit shown; // as a dialog's that shows a day and lets nobody choose one
    shown.setCalendarPopup(false);
    QTest::mouseClick(&shown, Qt::LeftButton);
    EXPECT_FALSE(shown.findChild<QCalendarWidget *>());
}

TEST(Appearance, TheDeskFontDrawsTheBackslashAsTheWonSign)
{
    EXPECT_TRUE(controls::showsWonSign(controls::deskFont()));
    EXPECT_TRUE(controls::showsWonSign(QFont(QStringLiteral("굴림"), 10)));
    EXPECT_FALSE(controls::showsWonSign(QFont(QStringLiteral("NanumGothicCoding"), 10)))
        << "a font with a plain backslash must be told apart";
}

TEST(Appearance, BackColoursReachTheScreenOnEveryKindOfControl)
{
    QLineEdit box;
    QPlainTextEdit memo;
    QComboBox list;
    controls::DateEdit date;
    QCheckBox check(QStringLiteral("과세"));
    QLabel label;
    // A list is drawn as a button, with the shading of one.
    const std::pair<QWidget *, int> cases[] = {{&box, 6},   {&memo, 6},  {&date, 6},
                                               {&check, 6}, {&label, 6}, {&list, 140}};
    for (const auto &[control, tolerance] : cases) {
        for (const controls::Ground ground : {controls::Ground::Locked, controls::Ground::Amber}) {
            const QColor color = controls::colors(ground).back;
            for (const bool enabled : {true, false}) {
                control->setEnabled(enabled);
                controls::setGround(control, ground);
                EXPECT_EQ(controls::backColor(control), color);
                control->resize(120, 30);
                const QColor shown = control->grab().toImage().pixelColor(control->width() / 2, 5);
                const int off = std::abs(shown.red() - color.red()) + std::abs(shown.green() - color.green())
                                + std::abs(shown.blue() - color.blue());
                EXPECT_LE(off, tolerance) << control->metaObject()->className() << ' ' << shown.name().toStdString();
            }
        }
    }
}

TEST(Palette, EachTextIsReadableOnEachGroundThatItMeets)
{
    using namespace controls;
    EXPECT_NEAR(contrast(Qt::white, Qt::black), 21, 0.01);
    EXPECT_NEAR(contrast(QColor(0x77, 0x77, 0x77), Qt::white), 4.48, 0.01);
    for (const Scheme scheme : {Scheme::Light, Scheme::Dark}) {
        QApplication::setPalette(deskPalette(scheme));
        const QPalette desk = QApplication::palette();
        for (int number = 0; number < int(Ground::Count); ++number) {
            SCOPED_TRACE("ground " + std::to_string(number) + (scheme == Scheme::Dark ? " dark" : " light"));
            const auto [back, text] = colors(Ground(number));
            EXPECT_GE(contrast(text, back), 4.5);
            EXPECT_GE(contrast(focusFrame(back), back), 3);
            for (int of = 0; of < int(Ink::Count) && isCalm(Ground(number)); ++of)
                EXPECT_GE(contrast(ink(Ink(of)), back), 4.5) << "ink " << of;
        }
        for (std::size_t series = 0; series < seriesCount; ++series)
            EXPECT_GE(contrast(seriesColor(series), colors(Ground::Field).back), 3) << series;
        EXPECT_GE(contrast(scrollHandle(), colors(Ground::Face).back), 3);
        for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive})
            EXPECT_GE(contrast(desk.color(group, QPalette::Link), desk.color(group, QPalette::Window)), 4.5);
    }
    QApplication::setPalette(deskPalette(Scheme::Light));
}

TEST(Appearance, AButtonOfAnAccentIsFlatAndWhatHasTheFocusStandsInAFrameOfTwoPixels)
{
    using namespace controls;
    QWidget window;
    auto *layout = new QVBoxLayout(&window);
    auto *button = new PushCheck;
    auto *box = new QLineEdit;
    auto *list = new QPlainTextEdit;
    for (QWidget *control : QWidgetList{button, box, list})
        layout->addWidget(control);
    setGround(button, Ground::Accent);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    const auto columnOf = [](QWidget *control) {
        const QImage image = control->grab().toImage();
        std::vector<QRgb> pixels;
        for (int y = 1; y < image.height() - 1; ++y)
            pixels.push_back(image.pixel(image.width() / 2, y));
        return pixels;
    };
    for (const Ground ground : {Ground::Accent, Ground::Amber, Ground::Red}) {
        setGround(button, ground);
        box->setFocus();
        const std::vector<QRgb> face = columnOf(button);
        EXPECT_EQ(std::count(face.begin(), face.end(), colors(ground).back.rgb()), std::ssize(face)) << int(ground);
        button->setFocus();
        const std::vector<QRgb> framed = columnOf(button);
        EXPECT_EQ(std::count(framed.begin(), framed.end(), focusFrame(colors(ground).back).rgb()), 4) << int(ground);
    }
    for (QWidget *control : QWidgetList{box, list}) {
        control->setFocus();
        const QImage image = control->grab().toImage();
        for (const int y : {0, 1, image.height() - 2, image.height() - 1})
            EXPECT_EQ(image.pixelColor(image.width() / 2, y), focusFrame(colors(Ground::Field).back))
                << control->metaObject()->className() << y;
    }
}

TEST(TabWidget, ThePageInFrontIsLaidOutOnceForTheSizeThatItGets)
{
    struct Page : QWidget
    {
        QList<QSize> laidOutFor;
        void resizeEvent(QResizeEvent *event) override { laidOutFor += event->size(); }
    };
    QMainWindow window;
    auto *tabs = new controls::TabWidget;
    auto *page = new Page;
    tabs->addTab(page, QStringLiteral("판매관리"));
    tabs->addTab(new QWidget, QStringLiteral("통계"));
    window.setCentralWidget(tabs);
    window.resize(640, 480);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    EXPECT_EQ(page->laidOutFor, QList{page->size()});
    EXPECT_GT(page->width(), 600);
}

TEST(TabWidget, WhatComesAndGoesOnAPageHasNothingElsePaintedAnew)
{
    struct Still : QWidget
    {
        int painted = 0;
        void paintEvent(QPaintEvent *) override { ++painted; }
    };
    QMainWindow window;
    auto *tabs = new controls::TabWidget;
    auto *page = new QWidget;
    auto *still = new Still;
    auto *button = new QPushButton(QStringLiteral("저장"));
    QSizePolicy policy = button->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    button->setSizePolicy(policy);
    auto *layout = new QVBoxLayout(page);
    layout->addWidget(still, 1);
    layout->addWidget(button);
    tabs->addTab(page, QStringLiteral("판매"));
    window.setCentralWidget(tabs);
    window.resize(640, 480);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    const auto settle = [] {
        for (int level = 0; level < 12; ++level) // a layout goes up by one each turn
            QApplication::processEvents();
    };
    const auto paintedBy = [&](auto &&change) {
        settle();
        still->painted = 0;
        change();
        settle();
        return still->painted;
    };
    paintedBy([&] { button->hide(), button->show(); }); // the first one learns what the page asks for
    EXPECT_EQ(paintedBy([&] { button->hide(); }), 0);
    EXPECT_EQ(paintedBy([&] { button->show(); }), 0);

    const int narrow = tabs->tabBar()->width();
    tabs->tabBar()->setTabText(0, QStringLiteral("[홍길동]님의 판매관리"));
    page->setMinimumHeight(600);
    settle();
    EXPECT_GT(tabs->tabBar()->width(), narrow);
    EXPECT_GT(window.height(), 600);
}

TEST(Names, AScreenReaderHearsTheCaptionWithoutItsMark)
{
    controls::PushCheck plain(QStringLiteral("저장(&S)"));
    EXPECT_EQ(accessibleName(&plain), QStringLiteral("저장(S)"));
    controls::PushCheck company(controls::literalCaption(QStringLiteral("약초&한방")));
    EXPECT_EQ(accessibleName(&company), QStringLiteral("약초&한방"));
}
