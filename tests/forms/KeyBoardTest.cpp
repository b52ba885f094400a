#include "forms/modKeyBoard.h"

#include "forms/modFunctions.h"
#include "tests/forms/Typist.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

#include <gtest/gtest.h>

namespace {

using Routine = void (*)(int &, Qt::KeyboardModifiers &);

void plainEnter(int &keyCode, Qt::KeyboardModifiers &)
{
    enterToTab(keyCode);
}

void arrows(int &keyCode, Qt::KeyboardModifiers &)
{
    arrowEnterToTab(keyCode);
}

} // namespace

TEST(KeysAsTab, MoveTheFocusAndEatTheKey)
{
    constexpr int stays = 1;
    // focus: index of the box that has the focus then; it starts at 1
    const struct
    {
        const char *what;
        Routine routine;
        int key;
        Qt::KeyboardModifiers state;
        int focus;
    } cases[] = {
        {"Enter", plainEnter, Qt::Key_Return, {}, 2},
        {"Enter of the keypad", plainEnter, Qt::Key_Enter, {}, 2},
        {"Down means nothing to Enter's routine", plainEnter, Qt::Key_Down, {}, stays},
        {"Enter among arrows", arrows, Qt::Key_Return, {}, 2},
        {"Down", arrows, Qt::Key_Down, {}, 2},
        {"Up", arrows, Qt::Key_Up, {}, 0},
        {"Left", arrows, Qt::Key_Left, {}, stays},
        {"Ctrl+Down", ctrlArrowToTab, Qt::Key_Down, Qt::ControlModifier, 2},
        {"Ctrl+Up", ctrlArrowToTab, Qt::Key_Up, Qt::ControlModifier, 0},
        {"Down without Ctrl", ctrlArrowToTab, Qt::Key_Down, {}, stays},
        {"Ctrl+Enter", ctrlArrowToTab, Qt::Key_Return, Qt::ControlModifier, stays},
        {"Ctrl+Shift+Down", ctrlArrowToTab, Qt::Key_Down, Qt::ControlModifier | Qt::ShiftModifier, 2},
    };
    for (const auto &entry : cases) {
        const QList<QWidget *> boxes = {new QLineEdit, new QLineEdit, new QLineEdit};
        Typist typist(boxes);
        boxes[1]->setFocus();
        int key = entry.key;
        Qt::KeyboardModifiers state = entry.state;
        entry.routine(key, state);
        EXPECT_TRUE(boxes[entry.focus]->hasFocus()) << entry.what;
        EXPECT_EQ(key, entry.focus == stays ? entry.key : 0) << entry.what;
        if (entry.focus == stays)
            EXPECT_EQ(state, entry.state) << entry.what;
        else
            EXPECT_FALSE(state & (Qt::ControlModifier | Qt::ShiftModifier)) << entry.what;
    }
}

TEST(SelectAllText, TakesTextBoxesAndPassesOverTheRest)
{
    QLineEdit line(QStringLiteral("물품"));
    selectAllText(&line);
    EXPECT_EQ(line.selectedText(), QStringLiteral("물품"));
    QComboBox combo;
    selectAllText(&combo); // cannot be typed into
    combo.setEditable(true);
    combo.setEditText("현금");
    selectAllText(&combo);
    EXPECT_EQ(combo.lineEdit()->selectedText(), QStringLiteral("현금"));
    QPushButton button;
    selectAllText(&button);
    selectAllText(nullptr);
}
