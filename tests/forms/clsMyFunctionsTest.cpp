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
    controls::setGround(&line, controls::Ground::Needed);
    const ControlGroup group = {&line, &memo};
    const clsMyFunctions functions;

    functions.setCollection2Locked(group, true);
    EXPECT_TRUE(line.isReadOnly());
    EXPECT_TRUE(memo.isReadOnly());
    EXPECT_TRUE(line.isEnabled()); // its text can still be read and copied
    EXPECT_EQ(controls::backColor(&line), controls::colors(controls::Ground::Locked).back);
    EXPECT_EQ(controls::backColor(&memo), controls::colors(controls::Ground::Locked).back);
    EXPECT_FALSE(line.hasFrame());
    EXPECT_EQ(memo.frameShape(), QFrame::NoFrame);

    functions.setCollection2Locked(group, false);
    EXPECT_FALSE(line.isReadOnly());
    EXPECT_FALSE(memo.isReadOnly());
    EXPECT_EQ(controls::backColor(&line),
              controls::colors(controls::Ground::Locked).back); // whoever opens it paints it
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
