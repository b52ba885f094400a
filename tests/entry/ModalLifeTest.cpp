#include "tests/entry/EntryDesk.h"

#include "tests/support/WheelTurns.h"

#include <QFile>
#include <QFileDialog>
#include <QPointer>
#include <QRegularExpression>
#include <QTimer>

#include <gmock/gmock.h>

#include <functional>
#include <utility>
#include <vector>

namespace {

/// One box, dialog or preview, and the way there: a name to press, "grid row" to choose, "tab number" to turn to.
struct Standing
{
    QString what;
    QString way;    ///< on the window, separated by ", "; what stands after ">" is pressed in the dialog that came
    QString expect; ///< object name, or title, of what stands at last
    QString undo;   ///< of what the way did to the database
};

/// Those of a file: the lines of each, a blank line between two.
std::vector<Standing> standingsOf(const char *file)
{
    std::vector<Standing> all;
    for (const QString &block : textOf(file).trimmed().split(QStringLiteral("\n\n"))) {
        const QStringList lines = block.split(u'\n');
        all.push_back({lines.value(0), lines.value(1), lines.value(2), lines.value(3)});
    }
    return all;
}

/// The window with real boxes: nobody answers for the user.
class ModalLife : public EntryDesk
{
protected:
    ModalLife()
    {
        controls::setMessageHandler({});
        fillShop();
        runFile(database_, "entry/owing.sql");
        QFile old(pdf());
        EXPECT_TRUE(old.open(QIODevice::WriteOnly));
    }

    QString pdf() const { return folder_.filePath(QStringLiteral("있는 파일.pdf")); }

    /// Goes the way of it and does something once it stands; returns when everything has ended.
    void under(const Standing &standing, const std::function<void(QWidget *)> &act)
    {
        sell();
        way_ = standing.way.split(QStringLiteral(" > "));
        act_ = [&](QWidget *modal) {
            EXPECT_THAT((QStringList{modal->objectName(), modal->windowTitle()}), testing::Contains(standing.expect));
            act(modal);
        };
        stood_ = nullptr;
        watch();
        go(window(), way_.takeFirst());
        EXPECT_FALSE(act_) << "nothing stood";
        act_ = nullptr;
        settle();
    }

private:
    void watch()
    {
        QTimer::singleShot(5, qApp, [this] {
            QWidget *modal = QApplication::activeModalWidget();
            const bool stands = modal && modal != stood_;
            if (act_ && (!stands || !way_.isEmpty()))
                watch();
            if (!act_ || !stands)
                return;
            stood_ = modal;
            if (way_.isEmpty())
                std::exchange(act_, nullptr)(modal);
            else
                go(modal, way_.takeFirst());
        });
    }
    void go(QWidget *place, const QString &way)
    {
        for (const QString &step : way.split(QStringLiteral(", "))) {
            const QString name = step.section(QRegularExpression(QStringLiteral("[ =]")), 0, 0);
            const QString rest = step.mid(name.size() + 1);
            if (name == QLatin1String("elsewhere")) {
                database_.run(rest);
            } else if (name == QLatin1String("enter")) {
                sell();
            } else if (name == QLatin1String("owe")) {
                typeInto(place->findChild<QTableView *>(QStringLiteral("tdbCustSaleMaster")), rest);
            } else if (name == QLatin1String("tab")) {
                press(tabs()->tabBar(), tabs()->tabBar()->tabRect(rest.toInt()).center());
            } else if (name == QLatin1String("replace")) {
                static_cast<QFileDialog *>(place)->selectFile(pdf());
                static_cast<QDialog *>(place)->accept();
            } else if (auto *grid = place->findChild<QTableView *>(name)) {
                chooseIn(grid, rest.toInt());
            } else if (auto *box = place->findChild<QLineEdit *>(name)) {
                box->setText(rest);
            } else {
                auto *button = place->findChild<QAbstractButton *>(name);
                ASSERT_TRUE(button) << step.toStdString();
                QTest::mouseClick(button, Qt::LeftButton); // returns when what it opened has ended
            }
        }
    }
    static void chooseIn(QTableView *view, int row)
    {
        int column = 0;
        while (view->isColumnHidden(column))
            ++column;
        ASSERT_LT(row, view->model()->rowCount());
        const QModelIndex cell = view->model()->index(row, column);
        press(view->viewport(), view->visualRect(cell).center());
    }
    static void press(QWidget *control, const QPoint &place)
    {
        const QPointer<QWidget> alive(control);
        QTest::mousePress(alive, Qt::LeftButton, {}, place);
        if (alive)
            QTest::mouseRelease(alive, Qt::LeftButton, {}, place);
    }

    static void typeInto(QTableView *view, const QString &text)
    {
        QTest::keyClick(view, Qt::Key_F2);
        auto *cell = view->viewport()->findChild<QLineEdit *>();
        ASSERT_TRUE(cell);
        QTest::keyClicks(cell, text);
        QTest::keyClick(cell, Qt::Key_Return);
        QTest::qWait(20);
    }

    QStringList way_;
    std::function<void(QWidget *)> act_; ///< empty when it is done
    QPointer<QWidget> stood_;
};

} // namespace

TEST_F(ModalLife, TheHostMayDeleteTheWindowUnderWhateverStands)
{
    // Also under boxes that a handler deep in the window's own work opens, after another desk or a broken server.
    for (const char *file : {"entry/standings.txt", "entry/troubles.txt"}) {
        for (const Standing &standing : standingsOf(file)) {
            SCOPED_TRACE(standing.what.toStdString());
            under(standing, [](QWidget *) { delete window(); });
            EXPECT_FALSE(window());
            EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
            if (!standing.undo.isEmpty())
                database_.run(standing.undo);
        }
    }
    sell();
    EXPECT_TRUE(isUp()) << "the next entry makes a new one";
}

TEST_F(ModalLife, TheProgramMayBeLeftUnderWhateverStands)
{
    for (const bool politely : {true, false}) {
        for (const Standing &standing : standingsOf("entry/standings.txt")) {
            SCOPED_TRACE(standing.what.toStdString() + (politely ? ", the host quits" : ", the host's loop ends"));
            QTimer::singleShot(0, qApp, [&] {
                under(standing, [politely](QWidget *) { politely ? QApplication::quit() : QCoreApplication::exit(0); });
            });
            QTimer endless; // of this round alone
            endless.setSingleShot(true);
            QObject::connect(&endless, &QTimer::timeout, [] { QCoreApplication::exit(1); });
            endless.start(20'000);
            EXPECT_EQ(QApplication::exec(), 0);
            EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
            close();
            EXPECT_FALSE(window());
        }
    }
}

TEST_F(ModalLife, TheWheelTurnsNothingThatItPassesOver)
{
    for (const Standing &standing : standingsOf("entry/standings.txt")) {
        if (standing.expect.startsWith(QLatin1String("frm")))
            under(standing, [](QWidget *modal) {
                EXPECT_EQ(turnedByWheel(modal).toStdString(), "");
                delete window();
            });
    }
    sell();
    for (int tab : {0, 1}) {
        tabs()->setCurrentIndex(tab);
        EXPECT_EQ(turnedByWheel(window()).toStdString(), "");
    }
}
