#include "platform/controls/Appearance.h"
#include "platform/controls/DateEdit.h"
#include "platform/controls/MessageBox.h"
#include "platform/controls/Named.h"
#include "platform/controls/PushCheck.h"
#include "platform/controls/Stepper.h"
#include "platform/controls/Wheel.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/WheelTurns.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QSpinBox>
#include <QTest>
#include <QTimer>

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
              [&](QMessageBox &box) { row.caption ? press(box, row.caption) : QTest::keyClick(&box, row.key); });
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
        for (const QColor &color : {controls::LockedColor, QColor(0x20, 0x90, 0x40)}) {
            for (const bool enabled : {true, false}) {
                control->setEnabled(enabled);
                controls::setBackColor(control, color);
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

TEST(Names, AScreenReaderHearsTheCaptionWithoutItsMark)
{
    controls::PushCheck plain(QStringLiteral("저장(&S)"));
    EXPECT_EQ(accessibleName(&plain), QStringLiteral("저장(S)"));
    controls::PushCheck company(controls::literalCaption(QStringLiteral("약초&한방")));
    EXPECT_EQ(accessibleName(&company), QStringLiteral("약초&한방"));
}
