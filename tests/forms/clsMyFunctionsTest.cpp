#include "forms/clsMyFunctions.h"

#include "forms/MemoBox.h"
#include "platform/controls/Appearance.h"
#include "platform/controls/DateEdit.h"
#include "tests/support/WheelTurns.h"

#include <QLineEdit>

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
