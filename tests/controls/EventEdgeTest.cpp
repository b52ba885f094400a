#include "platform/controls/EventEdge.h"
#include "platform/ado/Recordset.h"
#include "platform/controls/PushCheck.h"
#include "platform/runtime/RuntimeError.h"
#include "tests/support/LogLines.h"
#include "tests/support/MessageRecorder.h"
#include "tests/support/TestDatabase.h"

#include <QSignalSpy>
#include <QTest>

#include <gmock/gmock.h>

using controls::PushCheck;
using controls::runEvent;
using runtime::ErrorNumber;
using runtime::RuntimeError;
using testing::ElementsAre;

namespace {

void fail(const QString &description)
{
    throw RuntimeError(ErrorNumber::InvalidCall, description);
}

/// What the box saw of the database at the moment it was shown.
class EventEdgeOnADatabase : public testing::Test
{
protected:
    void begin()
    {
        desk()->BeginTrans();
        desk()->Execute("INSERT INTO tPSCompanyMaster (CM_Name) VALUES ('동의상사')");
    }
    const ado::ConnectionPtr &desk() { return database_.connection(); }
    QString dealers() { return database_.value("SELECT COUNT(*) FROM tPSCompanyMaster"); }

    TestDatabase database_{ado::Engine::SQLite};
};

} // namespace

TEST(EventEdge, AnErrorEndsInABoxWithItsDescriptionWhateverItsType)
{
    MessageRecorder boxes;
    LogLines log;
    runEvent([] { fail(QStringLiteral("수량이 너무 큽니다.")); });
    runEvent([] { throw std::out_of_range("index 9"); });
    runEvent([] { throw std::bad_alloc(); });
    runEvent([] { throw 5; });
    runEvent([] {});
    ASSERT_EQ(boxes.messages.size(), 4);
    EXPECT_EQ(boxes.messages[0].text, QStringLiteral("수량이 너무 큽니다."));
    EXPECT_TRUE(boxes.messages[1].text.contains("index 9"));
    EXPECT_EQ(boxes.messages[2].text, QStringLiteral("메모리가 부족합니다."));
    EXPECT_FALSE(boxes.messages[3].text.isEmpty());
    EXPECT_EQ(log.take().size(), 4);
}

TEST(EventEdge, AnInnerEventFailsAloneAndTheOuterGoesOn)
{
    MessageRecorder boxes;
    QStringList steps;
    runEvent([&] {
        steps << QStringLiteral("outer begins");
        runEvent([] { fail(QStringLiteral("inner")); });
        steps << QStringLiteral("outer goes on");
        fail(QStringLiteral("outer"));
        steps << QStringLiteral("never");
    });
    EXPECT_EQ(steps, (QStringList{QStringLiteral("outer begins"), QStringLiteral("outer goes on")}));
    EXPECT_EQ(boxes.texts(), (QStringList{QStringLiteral("inner"), QStringLiteral("outer")}));
}

TEST_F(EventEdgeOnADatabase, AnAbandonedTransactionIsRolledBackBeforeTheBoxShows)
{
    bool openInBox = true;
    int othersWrote = -1;
    MessageRecorder boxes;
    boxes.whileItStands = [&] {
        openInBox = desk()->inTransaction();
        // The other desk would wait for the lock, and fail, if it were still held.
        othersWrote = database_.otherDesk()->Execute("INSERT INTO tPSCompanyMaster (CM_Name) VALUES ('다른')");
    };
    runEvent([&] {
        begin();
        fail(QStringLiteral("저장 중 오류"));
    });
    EXPECT_FALSE(openInBox);
    EXPECT_EQ(othersWrote, 1);
    EXPECT_EQ(dealers(), QStringLiteral("1")) << "only the other desk's row";
}

TEST(PushCheck, AClickRunsTheWorkOnceWithTheValueBackAtZero)
{
    PushCheck button(QStringLiteral("추가"));
    std::vector<int> values;
    button.onPush(&button, [&] { values.push_back(button.value()); });
    QSignalSpy clicks(&button, &PushCheck::checkClicked);

    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_THAT(values, ElementsAre(0));
    EXPECT_EQ(clicks.count(), 2) << "the reset raises the click again";

    QTest::keyClick(&button, Qt::Key_Space);
    button.setValue(1);
    EXPECT_THAT(values, ElementsAre(0, 0, 0));
    EXPECT_EQ(clicks.count(), 6);
    button.setValue(0);
    EXPECT_EQ(clicks.count(), 6) << "an unchanged value raises nothing";
}

TEST(PushCheck, CodeRunsADisabledButtonAndTheUserDoesNot)
{
    PushCheck button(QStringLiteral("삭제"));
    int runs = 0;
    button.onPush(&button, [&] { ++runs; });
    button.setEnabled(false);
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_EQ(runs, 0);
    button.setValue(1);
    EXPECT_EQ(runs, 1);
}

TEST(PushCheck, WorkThatFailsOrDestroysTheButtonEndsQuietly)
{
    MessageRecorder boxes;
    auto *button = new PushCheck(QStringLiteral("닫기"));
    bool destroy = false;
    button->onPush(button, [&] {
        if (destroy)
            delete button;
        fail(QStringLiteral("실패"));
    });
    button->setValue(1);
    EXPECT_EQ(button->value(), 0) << "the button can be pressed again after a failure";
    destroy = true;
    QMetaObject::invokeMethod(button, [button] { button->setValue(1); });
    EXPECT_EQ(boxes.messages.size(), 2);
}
