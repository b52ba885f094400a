#include "platform/controls/EventEdge.h"
#include "platform/controls/Modal.h"
#include "platform/runtime/RuntimeError.h"
#include "tests/support/Wire.h"
#include "tests/whole/SaleDesk.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QThread>
#include <QTimer>

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

    /// After 1.6 s of the work the user acts, and after so long the server is there again.
    void workWhile(const std::function<void()> &work, std::function<void()> userActs, int mended)
    {
        std::thread meanwhile([&, userActs] {
            QThread::msleep(1600);
            QMetaObject::invokeMethod(qApp, userActs, Qt::QueuedConnection);
            QThread::msleep(unsigned(mended - 1600));
            wire_.mend();
        });
        took_.start();
        work();
        addingTook_ = took_.elapsed();
        meanwhile.join();
    }
    void addLineWhile(std::function<void()> userActs, int mended)
    {
        workWhile([this] { desk_.addLine(0, "2"); }, std::move(userActs), mended);
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
            QWidget bubble(nullptr, Qt::ToolTip);
            bubble.show();
            EXPECT_TRUE(bubble.close()) << "as each does when another window comes to the front";
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
    if (const QString file = qEnvironmentVariable("ZELVO_WAITING_PICTURE"); !file.isEmpty())
        wide.save(file); // for docs/take-pictures
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

TEST_F(WaitingLine, GoesWithTheDialogThatIsClosed)
{
    wire_.fallSilent();
    QDialog dialog(desk_.window());
    dialog.resize(150, 200);
    const auto ask = [&] { controls::runEvent([&] { desk_.connection->read("SELECT 1"); }, &dialog); };
    QString text;
    QRect room, filled;
    const auto close = [&] {
        if (const auto *line = dialog.findChild<QLabel *>("lblWaiting")) {
            text = line->text();
            room = line->contentsRect();
            filled = line->fontMetrics().boundingRect(room, line->wordWrap() ? Qt::TextWordWrap : 0, text);
        }
        dialog.close();
    };
    bool gone = false;
    QTimer::singleShot(0, &dialog, [&] {
        workWhile(ask, close, 4500);
        gone = QTest::qWaitFor([&] { return !dialog.isVisible(); }, 500);
        dialog.reject();
    });
    controls::runEvent([&] { controls::runModal(&dialog); }, desk_.window());
    EXPECT_TRUE(gone) << "the handler that it was opened by is still at work";
    EXPECT_TRUE(room.contains(filled)) << room.width() << 'x' << room.height() << ' ' << text.toStdString();
    EXPECT_THAT(desk_.said(), testing::HasSubstr("연결"));
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
