#include "forms/MoneyBox.h"

#include "forms/MemoBox.h"
#include "forms/clsMyFunctions.h"
#include "platform/controls/Appearance.h"
#include "tests/forms/Typist.h"

#include <QClipboard>
#include <QInputMethodEvent>
#include <QMimeData>

#include <gtest/gtest.h>

namespace {

const QString zero = QStringLiteral("\\0");

void commit(QWidget *box, const QString &text)
{
    QInputMethodEvent event;
    event.setCommitString(text);
    QCoreApplication::sendEvent(box, &event);
}

void paste(Typist &typist, const QString &text)
{
    QApplication::clipboard()->setText(text);
    typist.strike(Qt::Key_V, QStringLiteral("\x16"), Qt::ControlModifier);
}

} // namespace

TEST(MoneyBox, ReformatsAfterEveryKeyAndKeepsTheCaretAtTheEnd)
{
    // before: wholly selected
    const struct
    {
        const char *what;
        const char16_t *before, *keys, *shown;
    } cases[] = {
        {"typed digits replace the value", u"\\9,999", u"1234", u"\\1,234"},
        {"a tenth digit is dropped", u"\\0", u"1234567890", u"\\123,456,789"},
        {"letters and signs do nothing", u"\\0", u"12a.b+3", u"\\123"},
        {"a minus within a number does nothing", u"\\0", u"12-3", u"\\123"},
        {"a minus over the whole value leaves zero", u"\\500", u"-", u"\\0"},
        {"a minus behind zero leaves zero", u"\\0", u"0-", u"\\0"},
        {"the last digit taken away leaves zero", u"\\0", u"7<", u"\\0"},
        {"a digit in front of the sign of zero", u"\\0", u"0^5", u"\\5"},
        {"a digit typed at the front counts", u"\\0", u"12^9", u"\\912"},
    };
    auto *box = new MoneyBox;
    Typist typist({box});
    for (const auto &entry : cases) {
        box->setText(QString::fromUtf16(entry.before));
        box->selectAll();
        for (const QChar key : QString::fromUtf16(entry.keys)) {
            typist.type(key);
            EXPECT_TRUE(key == u'^' || box->cursorPosition() == box->text().size()) << entry.what;
        }
        EXPECT_EQ(box->text(), QString::fromUtf16(entry.shown)) << entry.what;
    }
}

TEST(MoneyBox, TurnsRedForAPastedNegativeAndBlackAgain)
{
    auto *box = new MoneyBox;
    Typist typist({box});
    box->setText(zero);
    box->selectAll();
    paste(typist, QStringLiteral("-1500"));
    EXPECT_EQ(box->text(), QStringLiteral("-\\1,500"));
    EXPECT_EQ(controls::foreColor(box), controls::ink(controls::Ink::Negative));

    typist.type(QStringLiteral("7"));
    EXPECT_EQ(box->text(), QStringLiteral("-\\15,007"));
    box->selectAll();
    typist.type(QStringLiteral("7"));
    EXPECT_EQ(box->text(), QStringLiteral("\\7"));
    EXPECT_EQ(controls::foreColor(box), controls::ink(controls::Ink::Plain));
}

TEST(MoneyBox, TheReleaseOfTheTabThatBroughtTheFocusReformatsAndKeepsTheSelection)
{
    auto *first = new MoneyBox;
    auto *second = new MoneyBox;
    auto *third = new MoneyBox;
    Typist typist({first, second, third});
    second->setText("\\1,000");
    third->setText("\\12,345,678,901"); // by code, longer than can be typed
    typist.tab();
    ASSERT_TRUE(second->hasFocus());
    EXPECT_EQ(second->selectedText(), QStringLiteral("\\1,000"));
    typist.type(QStringLiteral("5"));
    EXPECT_EQ(second->text(), QStringLiteral("\\5"));
    typist.tab();
    EXPECT_EQ(third->text(), QStringLiteral("\\123,456,789"));
}

TEST(MoneyBox, AHeldKeyIsReformattedOnceAtItsRelease)
{
    auto *box = new MoneyBox;
    Typist typist({box});
    box->setText(zero);
    box->selectAll();
    const QString one = QStringLiteral("1");
    typist.press(Qt::Key_1, one);
    for (int repeat = 0; repeat < 3; ++repeat) {
        typist.release(Qt::Key_1, one, {}, true);
        typist.press(Qt::Key_1, one, {}, true);
        EXPECT_FALSE(box->text().contains(u'\\'));
    }
    typist.release(Qt::Key_1, one);
    EXPECT_EQ(box->text(), QStringLiteral("\\1,111"));
}

TEST(MoneyBox, SiftsWhatAnInputMethodCommits)
{
    auto *box = new MoneyBox;
    Typist typist({box});
    box->setText("\\12");
    commit(box, QStringLiteral("가"));
    EXPECT_EQ(box->text(), QStringLiteral("\\12"));
    commit(box, QStringLiteral("3"));
    EXPECT_EQ(box->text(), QStringLiteral("\\123"));

    auto *name = new MoneyBox({.onFocus = OnFocus::CaretToEnd});
    Typist other({name});
    commit(name, QStringLiteral("홍삼"));
    EXPECT_EQ(name->text(), QStringLiteral("홍삼"));
}

TEST(MoneyBox, LetsEditingKeysAndClipboardThrough)
{
    auto *box = new MoneyBox;
    Typist typist({box});
    box->setText("\\123");
    box->selectAll();
    typist.strike(Qt::Key_C, QStringLiteral("\x03"), Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("\\123"));
    box->setCursorPosition(1);
    typist.strike(Qt::Key_Delete, QStringLiteral("\x7f"));
    EXPECT_EQ(box->text(), QStringLiteral("\\23"));
}

TEST(TextBoxHabits, DecideWhatTheFocusAndAChangeDo)
{
    // caret: after the focus came to "abcd" with the caret at 1; caretAfterEdit: after "xyz" was written by code with the caret at 0
    const struct
    {
        const char *what;
        TextBoxHabits habits;
        int caret, selected, caretAfterEdit;
    } cases[] = {
        {"select all", {.onFocus = OnFocus::SelectAll}, 4, 4, 3},
        {"caret to end", {.onFocus = OnFocus::CaretToEnd}, 4, 0, 3},
        {"nothing, also when it comes by Tab", {}, 1, 0, 3},
    };
    for (const auto &entry : cases) {
        auto *before = new QLineEdit;
        auto *box = new MoneyBox(entry.habits);
        Typist typist({before, box});
        box->setText("abcd");
        box->setCursorPosition(1);
        typist.tab();
        ASSERT_TRUE(box->hasFocus()) << entry.what;
        EXPECT_EQ(box->cursorPosition(), entry.caret) << entry.what;
        EXPECT_EQ(box->selectedText().size(), entry.selected) << entry.what;
        EXPECT_EQ(box->text(), QStringLiteral("abcd")) << entry.what; // no member of these reformats
    }
}

TEST(MemoBox, IsLeftByTabAndPutsItsCaretAsItsHabitsSay)
{
    auto *onFocus = new MemoBox({.onFocus = OnFocus::CaretToEnd});
    auto *onChange = new MemoBox({.caretToEndOnChange = true});
    auto *last = new QLineEdit;
    Typist typist({last, onFocus, onChange});
    onFocus->setText("메모");
    onChange->setText("둘째 메모");
    EXPECT_EQ(onChange->textCursor().position(), 5);
    typist.tab();
    ASSERT_TRUE(onFocus->hasFocus());
    EXPECT_EQ(onFocus->textCursor().position(), 2);
    typist.tab();
    EXPECT_TRUE(onChange->hasFocus());
    EXPECT_EQ(onFocus->text(), QStringLiteral("메모"));
}

TEST(MemoBox, GivesBackWhatItWasGivenUnlessItIsChangedAndKeepsTheLineBreaksOfWhatCame)
{
    // typed at the end: '\n' is Enter, '<' Backspace
    const struct
    {
        const char *what;
        const char16_t *set, *typed, *text;
    } cases[] = {
        {"untouched", u"가\r\n나", u"", u"가\r\n나"},
        {"untouched, breaks of all kinds and a hard blank", u"가\r나\n다\r\n라\u00A0마\r\n", u"",
         u"가\r나\n다\r\n라\u00A0마\r\n"},
        {"typed and taken back", u"가\r\n나", u"1<", u"가\r\n나"},
        {"a further line", u"가\r\n나", u"\n1", u"가\r\n나\r\n1"},
        {"a further line after lone carriage returns", u"가\r나", u"\n1", u"가\r나\r1"},
        {"a further line after line feeds", u"가\n나", u"\n1", u"가\n나\n1"},
        {"the first break", u"가", u"\n1", u"가\n1"},
    };
    auto *memo = new MemoBox;
    Typist typist({memo});
    for (const auto &entry : cases) {
        memo->setText(QString::fromUtf16(entry.set));
        memo->moveCursor(QTextCursor::End);
        for (const QChar key : QString::fromUtf16(entry.typed)) {
            if (key == u'\n')
                typist.strike(Qt::Key_Return, QStringLiteral("\r"));
            else
                typist.type(key);
        }
        EXPECT_EQ(memo->text(), QString::fromUtf16(entry.text)) << entry.what;
    }
    memo->setText(QStringLiteral("가\r\n나"));
    clsMyFunctions().resetCollection({memo});
    typist.strike(Qt::Key_Return, QStringLiteral("\r"));
    EXPECT_EQ(memo->text(), QStringLiteral("\n")) << "an emptied box starts anew";
}

// A syllable left in composition is kept when the focus goes; committed by the input method itself, or written over by code,
// it is taken once or not at all.
TEST(TextBoxes, KeepASyllableThatIsStillComposedOnce)
{
    auto *line = new MoneyBox({.onFocus = OnFocus::CaretToEnd});
    auto *memo = new MemoBox;
    Typist typist({line, memo});
    line->setText("대한");
    line->setFocus();
    for (const char16_t *commit : {u"민", u""}) {
        QInputMethodEvent composing(QStringLiteral("민"), {});
        QApplication::sendEvent(line, &composing);
        if (*commit) {
            QInputMethodEvent done;
            done.setCommitString(QString::fromUtf16(commit));
            QApplication::sendEvent(line, &done);
        } else {
            line->setText("국");
        }
        memo->setFocus();
        EXPECT_EQ(line->text(), *commit ? QStringLiteral("대한민") : QStringLiteral("국"));
        line->setFocus();
    }
}
