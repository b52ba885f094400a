#include "platform/print/PageCanvas.h"
#include "platform/print/VSPrinter.h"
#include "tests/support/MessageRecorder.h"
#include "tests/support/WheelTurns.h"

#include <QFile>
#include <QFileDialog>
#include <QScrollArea>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <utility>

namespace {

print::Document threePages()
{
    print::PageTable table(3, 1, 200);
    table.setColumnWidth(1, 180);
    for (int row = 1; row <= 3; ++row)
        table.setText(row, 1, QString(row * 3, QChar(u'■')));
    print::Document document(print::A4, {15, 20, 15, 20});
    document.addTable(table);
    return document;
}

class PreviewTest : public testing::Test
{
protected:
    PreviewTest()
    {
        preview_.setDocument(threePages(), QStringLiteral("영수증"));
        preview_.resize(1200, 700);
        preview_.show();
        preview_.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&preview_));
        preview_.setFocus();
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(preview_.windowHandle(), key, modifiers);
    }
    QAbstractButton *button(const char *name) { return preview_.findChild<QAbstractButton *>(QLatin1String(name)); }
    QWidget *canvas() { return preview_.findChild<print::PageCanvas *>(); }
    int inkColumns()
    {
        const QImage image = canvas()->grab().toImage();
        int columns = 0;
        for (int x = 0; x < image.width(); ++x) {
            bool ink = false;
            for (int y = 0; y < image.height() && !ink; ++y)
                ink = qGray(image.pixel(x, y)) < 100;
            columns += ink;
        }
        return columns;
    }

    print::VSPrinter preview_;
};

} // namespace

TEST_F(PreviewTest, GoesThroughThePagesByKeysAndButtons)
{
    const int first = inkColumns();
    EXPECT_GT(first, 0);
    EXPECT_FALSE(button("cmdPreviousPage")->isEnabled());
    press(Qt::Key_PageDown);
    EXPECT_EQ(preview_.currentPage(), 1);
    EXPECT_NEAR(inkColumns(), 2 * first, first / 4.0); // the second page's own text
    for (const auto &[key, page] : {std::pair(Qt::Key_Home, 0), std::pair(Qt::Key_End, 2)}) {
        press(key);
        EXPECT_EQ(preview_.currentPage(), page);
    }
    EXPECT_EQ(preview_.findChild<QLabel *>("lblPage")->text().toStdString(), "3 / 3쪽");
    EXPECT_FALSE(button("cmdNextPage")->isEnabled());
    press(Qt::Key_PageDown);
    EXPECT_EQ(preview_.currentPage(), 2);
    press(Qt::Key_PageUp);
    EXPECT_EQ(preview_.currentPage(), 1);
    QTest::mouseClick(button("cmdFirstPage"), Qt::LeftButton);
    EXPECT_EQ(preview_.currentPage(), 0);
}

TEST_F(PreviewTest, ZoomsThePageByKeys)
{
    const QSize natural = canvas()->size();
    EXPECT_NEAR(natural.width(), 210 / 25.4 * preview_.logicalDpiX(), 1);
    const int ink = inkColumns();
    press(Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_NEAR(canvas()->width(), natural.width() * 1.25, 2);
    EXPECT_NEAR(inkColumns(), ink * 1.25, ink * 0.1); // the text grows with the page
    for (int time = 0; time < 30; ++time)
        press(Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_DOUBLE_EQ(preview_.zoom(), 0.25);
    QWidget *view = preview_.findChild<QScrollArea *>()->viewport();
    for (const int turn : {120, 120, -120}) {
        QWheelEvent wheel({9, 9}, view->mapToGlobal(QPointF(9, 9)), {}, {0, turn}, Qt::NoButton, Qt::ControlModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(view, &wheel);
    }
    EXPECT_DOUBLE_EQ(preview_.zoom(), 0.3125);
    press(Qt::Key_0, Qt::ControlModifier);
    const QSize room = preview_.findChild<QScrollArea *>()->viewport()->size();
    EXPECT_LE(canvas()->height(), room.height() + 2);
    EXPECT_GE(canvas()->height(), room.height() - 20);
    press(Qt::Key_1, Qt::ControlModifier);
    EXPECT_GE(canvas()->width(), room.width() - 40);
}

TEST_F(PreviewTest, ManyPagesCanBeStoppedAndLeaveNothing)
{
    print::Document many = threePages();
    while (many.pageCount() < 25)
        many.addPage();
    preview_.setDocument(many, QStringLiteral("영수증"));
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("many.pdf"));
    preview_.setDevice(file);
    auto *progress = preview_.findChild<QProgressBar *>("progress");
    int printed = 0;
    QObject::connect(&preview_, &print::VSPrinter::printed, [&] { ++printed; });
    const auto stop = QObject::connect(progress, &QProgressBar::valueChanged, [&](int page) {
        EXPECT_TRUE(progress->isVisible());
        if (page == 3)
            button("cmdCancel")->click();
    });
    press(Qt::Key_P, Qt::ControlModifier);
    EXPECT_EQ(progress->value(), 3);
    EXPECT_EQ(preview_.findChild<QLabel *>("lblDone")->text().toStdString(), "출력을 취소했습니다.");
    EXPECT_FALSE(QFile::exists(file));
    QObject::disconnect(stop);
    press(Qt::Key_P, Qt::ControlModifier);
    EXPECT_TRUE(QFile::exists(file));
    EXPECT_EQ(printed, 1);
    EXPECT_FALSE(progress->isVisible());
}

TEST_F(PreviewTest, SavesUnderTheChosenNameAndAsksBeforeItReplacesAFile)
{
    using controls::Answer;
    const struct
    {
        const char *what, *chosen;
        Answer answer;
        int questions;
        bool saved;
    } cases[] = {
        {"a new name gets its suffix", "영수증 1", Answer::No, 0, true},
        {"the question answered with yes", "영수증 1.pdf", Answer::Yes, 1, true},
        {"the question answered with no, then cancelled", "영수증 1", Answer::No, 1, false},
        {"cancelled", "", Answer::No, 0, false},
    };
    QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("영수증 1.pdf"));
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        if (QFile::exists(file)) { // what stands there tells whether it was replaced
            QFile old(file);
            ASSERT_TRUE(old.open(QIODevice::WriteOnly));
        }
        MessageRecorder boxes;
        boxes.answers = {c.answer};
        QString next = c.chosen[0] ? folder.filePath(QString::fromUtf8(c.chosen)) : QString();
        QTimer user;
        QObject::connect(&user, &QTimer::timeout, [&] {
            if (auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget())) {
                const QString chosen = std::exchange(next, QString());
                dialog->selectFile(chosen);
                static_cast<QDialog *>(dialog)->done(chosen.isEmpty() ? QDialog::Rejected : QDialog::Accepted);
            }
        });
        user.start(5);
        QTest::mouseClick(button("cmdSavePdf"), Qt::LeftButton);
        EXPECT_EQ(boxes.messages.size(), c.questions);
        EXPECT_EQ(QFile(file).size() > 0, c.saved);
        EXPECT_EQ(preview_.findChild<QLabel *>("lblDone")->text().toStdString(),
                  c.saved ? "저장했습니다: " + file.toStdString() : "");
    }
}

TEST_F(PreviewTest, TellsItsPageToAScreenReaderLineByLine)
{
    print::Document page;
    page.addText({.text = QStringLiteral("\\25,500"), .box = {60, 10.2, 30, 5}, .font = {}});
    page.addText({.text = QStringLiteral("합계"), .box = {10, 10, 30, 5}, .font = {}});
    page.addText({.text = QStringLiteral("영수증"), .box = {10, 1, 30, 5}, .font = {}});
    preview_.setDocument(page, QStringLiteral("영수증출력"));
    EXPECT_EQ(canvas()->accessibleName(), QStringLiteral("영수증출력 1쪽"));
    EXPECT_EQ(canvas()->accessibleDescription(), QStringLiteral("영수증\n합계\n25,500원"));
}

TEST_F(PreviewTest, TheWheelChoosesNoOtherPrinter)
{
    QTest::qWait(0); // the printers are asked for when the page stands
    auto *printers = preview_.findChild<QComboBox *>("cboPrinter");
    printers->addItems({QStringLiteral("가"), QStringLiteral("나")});
    printers->setCurrentIndex(0);
    EXPECT_EQ(turnedByWheel(&preview_), QString());
}
