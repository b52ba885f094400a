#include "forms/clsMyFunctions.h"

#include "forms/MemoBox.h"
#include "platform/controls/Appearance.h"
#include "platform/controls/DateEdit.h"
#include "platform/controls/PushCheck.h"
#include "platform/controls/Stepper.h"
#include "tests/support/WheelTurns.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>

#include <gtest/gtest.h>

TEST(LockedGroup, TextBoxesAreReadOnlyGreyAndFlatUntilTheyAreOpened)
{
    QLineEdit line(QStringLiteral("값"));
    MemoBox memo;
    controls::setBackColor(&line, Qt::yellow);
    const ControlGroup group = {&line, &memo};
    const clsMyFunctions functions;

    functions.setCollection2Locked(group, true);
    EXPECT_TRUE(line.isReadOnly());
    EXPECT_TRUE(memo.isReadOnly());
    EXPECT_TRUE(line.isEnabled()); // its text can still be read and copied
    EXPECT_EQ(controls::backColor(&line), controls::LockedColor);
    EXPECT_EQ(controls::backColor(&memo), controls::LockedColor);
    EXPECT_FALSE(line.hasFrame());
    EXPECT_EQ(memo.frameShape(), QFrame::NoFrame);

    functions.setCollection2Locked(group, false);
    EXPECT_FALSE(line.isReadOnly());
    EXPECT_FALSE(memo.isReadOnly());
    EXPECT_EQ(controls::backColor(&line), controls::LockedColor); // whoever opens it paints it
    EXPECT_TRUE(line.hasFrame());
    EXPECT_NE(memo.frameShape(), QFrame::NoFrame);
}

TEST(LockedGroup, ListsAreGreyedAndAllOtherControlsDisabled)
{
    QComboBox combo;
    QListWidget list;
    QCheckBox check;
    QRadioButton option;
    controls::PushCheck button;
    controls::DateEdit picker;
    controls::Stepper stepper(QStringLiteral("udCount"));
    const ControlGroup group = {&combo, &list, &check, &option, &button, &picker, &stepper};
    const QColor buttonColor = controls::backColor(&button);
    const clsMyFunctions functions;
    for (const bool locked : {true, false}) {
        functions.setCollection2Locked(group, locked);
        for (const QWidget *control : group)
            EXPECT_EQ(control->isEnabled(), !locked) << control->metaObject()->className();
    }
    EXPECT_EQ(controls::backColor(&combo), controls::LockedColor);
    EXPECT_EQ(controls::backColor(&list), controls::LockedColor);
    EXPECT_EQ(controls::backColor(&button), buttonColor);
}

TEST(LockedGroup, ADateThatItsPaneEnablesAgainIsStillNotTurnedByTheWheel)
{
    controls::DateEdit picker;
    picker.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&picker));
    const clsMyFunctions functions;
    for (const bool locked : {true, false}) {
        functions.setCollection2Locked({&picker}, locked);
        picker.setEnabled(true);
        picker.setFocus();
        const QDate before = picker.date();
        turnWheel(&picker);
        EXPECT_EQ(picker.date() == before, locked);
    }
}

TEST(ResetGroup, EmptiesTextBoxesAndLeavesTheRest)
{
    QLineEdit line(QStringLiteral("값"));
    MemoBox memo;
    memo.setText("메모");
    QCheckBox check(QStringLiteral("과세"));
    check.setChecked(true);
    clsMyFunctions().resetCollection({&line, &memo, &check});
    EXPECT_TRUE(line.text().isEmpty());
    EXPECT_TRUE(memo.text().isEmpty());
    EXPECT_TRUE(check.isChecked());
    EXPECT_EQ(check.text(), QStringLiteral("과세"));
}
