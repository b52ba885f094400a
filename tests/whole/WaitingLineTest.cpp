#include "platform/runtime/RuntimeError.h"
#include "tests/support/Wire.h"
#include "tests/whole/SaleDesk.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QThread>

#include <gmock/gmock.h>

#include <thread>

namespace {

/// A sale window whose server falls silent, or away, and somebody before it.
class WaitingLine : public testing::Test
{
protected:
    void SetUp() override
    {
        desk_.connection = ado::Connection::open(wire_.address(desk_.database.serverDatabase()));
        desk_.open();
    }

    /// Adds a line; after 1.6 s the user acts, and after so long the server is there again.
    void addLineWhile(std::function<void()> userActs, int mended)
    {
        std::thread meanwhile([&, userActs] {
            QThread::msleep(1600);
            QMetaObject::invokeMethod(qApp, userActs, Qt::QueuedConnection);
            QThread::msleep(unsigned(mended - 1600));
            wire_.mend();
        });
        took_.start();
        desk_.addLine(0, "2");
        addingTook_ = took_.elapsed();
        meanwhile.join();
    }

    QString lineOnTheScreen() const
    {
        const auto *line = desk_.window()->findChild<QLabel *>("lblWaiting");
        return line && line->isVisible() ? line->text() : QString();
    }

    Wire wire_;
    SaleDesk desk_{ado::Engine::PostgreSQL};
    QElapsedTimer took_;
    qint64 addingTook_ = 0;
};

} // namespace

TEST_F(WaitingLine, ShowsThatTheWindowWaitsAndLetsNothingElseBegin)
{
    wire_.fallSilent();
    QString line;
    QImage wide;
    const int width = desk_.window()->width();
    addLineWhile(
        [&] {
            line = lineOnTheScreen();
            desk_.window()->resize(desk_.window()->width() + 60, desk_.window()->height());
            wide = desk_.window()->grab().toImage();
            QTest::mouseClick(desk_.control("cmdCSAppendDetail"), Qt::LeftButton); // impatient
            QTest::keyClick(desk_.window(), Qt::Key_F12);
            desk::Patient other;
            other.key = 8;
            other.name = QStringLiteral("서문하늘");
            desk::SaleComponent(desk_.connection).showProductSale(other); // the host comes with the next patient
        },
        2600);
    EXPECT_TRUE(line.startsWith(QStringLiteral("다시 연결 중"))) << line.toStdString();
    EXPECT_EQ(wide.width(), width + 60);
    EXPECT_EQ(lineOnTheScreen(), QString());
    EXPECT_EQ(desk_.said(), "");
    EXPECT_EQ(desk_.joined("SELECT PM_PK, OrdD_Count FROM tPSOrderDetail"), "1|2") << "added once";
    EXPECT_EQ(desk_.joined("SELECT Cust_PK FROM tPSOrderMaster"), "7");
    walk::settle();
    EXPECT_TRUE(desk_.control<QTabWidget>("c1tabMain")->tabText(0).contains(QStringLiteral("서문하늘")));
}

TEST_F(WaitingLine, GoesWithTheWindowThatIsClosed)
{
    wire_.fallSilent();
    const QPointer<QWidget> window = desk_.window();
    bool closedAtOnce = true;
    addLineWhile([&] { closedAtOnce = window->close(); }, 8000);
    walk::settle();
    EXPECT_FALSE(closedAtOnce) << "the flow ends in its window";
    EXPECT_TRUE(window.isNull());
    EXPECT_LT(addingTook_, 6000);
    EXPECT_THAT(desk_.said(), testing::HasSubstr("판매추가를 실패 했습니다."));
}

TEST_F(WaitingLine, BridgesTheSecondsInWhichAServerIsStartedAnew)
{
    wire_.takeAway();
    QString line;
    addLineWhile([&] { line = lineOnTheScreen(); }, 2500);
    EXPECT_TRUE(line.startsWith(QStringLiteral("다시 연결 중"))) << line.toStdString();
    EXPECT_EQ(desk_.said(), "");
    EXPECT_EQ(desk_.joined("SELECT PM_PK, OrdD_Count FROM tPSOrderDetail"), "1|2");
}
