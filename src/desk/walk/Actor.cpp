#include "desk/walk/Actor.h"

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QElapsedTimer>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QRadioButton>
#include <QScreen>
#include <QTabWidget>
#include <QTest>
#include <QTextStream>
#include <QTimer>
#include <QWindow>

#include <exception>

namespace walk {

namespace {

constexpr int desktopTakes = 3000; ///< ms at most, from asking for a window or the focus to having it

/// Where it does not come to that, the walk goes on and finds out.
void waitUpToThat(const std::function<bool()> &isThere)
{
    [[maybe_unused]] const bool there = QTest::qWaitFor(isThere, desktopTakes);
}

QWindow *handleOf(QWidget *widget)
{
    QWindow *handle = widget->window()->windowHandle();
    if (!handle)
        throw Astray(QStringLiteral("a window is not on the screen"));
    return handle;
}

void grabTo(const QString &file, QWidget *window)
{
    if (!window->grab().save(file))
        throw Astray(QStringLiteral("cannot write %1").arg(file));
}

/// Those that ZELVO_WALK_DESKS asks for: "1366x768 1093x614".
QList<QSize> otherDesks()
{
    QList<QSize> desks;
    for (const QString &desk : qEnvironmentVariable("ZELVO_WALK_DESKS").split(u' ', Qt::SkipEmptyParts))
        desks += QSize(desk.section(u'x', 0, 0).toInt(), desk.section(u'x', 1).toInt());
    return desks;
}

/// The centre; the mark itself of a box whose caption does not fill its width.
QPoint aimAt(QWidget *widget)
{
    const bool hasMark = qobject_cast<QCheckBox *>(widget) || qobject_cast<QRadioButton *>(widget);
    const QPoint target = hasMark ? QPoint(10, widget->height() / 2) : widget->rect().center();
    return widget->mapTo(widget->window(), target);
}

} // namespace

void settle(int milliseconds)
{
    QTest::qWait(milliseconds);
}

Actor::Actor(const QString &folder)
    : folder_(folder)
{
    QDir().mkpath(folder_);
}

void Actor::say(const QString &sentence)
{
    QTextStream out(stdout);
    out << QStringLiteral("%1. %2").arg(++steps_, 2).arg(sentence) << Qt::endl;
}

void Actor::picture(const QString &name, QWidget *window)
{
    settle();
    const QString file =
        QStringLiteral("%1/%2-%3.png").arg(folder_).arg(++pictures_, 2, 10, QLatin1Char('0')).arg(name);
    grabTo(file, window);
    // On desks of other sizes, each in a folder of its own.
    const QSize usual = window->size();
    for (const QSize &desk : otherDesks()) {
        const QString folder = QStringLiteral("%1/%2x%3").arg(folder_).arg(desk.width()).arg(desk.height());
        QDir().mkpath(folder);
        window->resize(desk); // not below its least size, nor one whose size is fixed
        settle();
        grabTo(folder + file.mid(folder_.size()), window);
    }
    if (window->size() != usual)
        window->resize(usual);
}

QWidget *Actor::window(const QString &name, int milliseconds) const
{
    QElapsedTimer waited;
    waited.start();
    do {
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget *window : windows) {
            if (window->isVisible() && window->objectName() == name) {
                waitUpToThat([window] { return window->isActiveWindow(); });
                return window;
            }
        }
        settle();
    } while (waited.elapsed() < milliseconds);
    throw Astray(QStringLiteral("the window '%1' does not show").arg(name));
}

void Actor::click(QWidget *control)
{
    if (!control->isVisible() || !control->isEnabled())
        throw Astray(QStringLiteral("'%1' cannot be clicked").arg(control->objectName()));
    QTest::mouseClick(handleOf(control), Qt::LeftButton, {}, aimAt(control));
    settle();
}

void Actor::clickRow(QTableView *grid, int row)
{
    const QModelIndex cell = grid->indexAt(QPoint(4, grid->rowViewportPosition(row) + grid->rowHeight(row) / 2));
    if (!cell.isValid())
        throw Astray(QStringLiteral("'%1' has no row %2").arg(grid->objectName()).arg(row + 1));
    clickItem(grid, cell);
}

void Actor::clickItem(QAbstractItemView *view, const QModelIndex &item)
{
    const QRect place = view->visualRect(item) & view->viewport()->rect();
    if (place.isEmpty())
        throw Astray(QStringLiteral("an item of '%1' is out of view").arg(view->objectName()));
    QTest::mouseClick(handleOf(view), Qt::LeftButton, {}, view->viewport()->mapTo(view->window(), place.center()));
    settle();
}

void Actor::clickCell(QTableView *grid, const QString &text)
{
    for (int column = 0; column < grid->model()->columnCount(); ++column) {
        const QModelIndexList found = grid->model()->match(grid->model()->index(0, column), Qt::DisplayRole, text, 1,
                                                           Qt::MatchExactly | Qt::MatchCaseSensitive);
        if (grid->isColumnHidden(column) || found.isEmpty())
            continue;
        grid->scrollTo(found.first());
        const QPoint inViewport = grid->visualRect(found.first()).center();
        QTest::mouseClick(handleOf(grid), Qt::LeftButton, {}, grid->viewport()->mapTo(grid->window(), inViewport));
        settle();
        return;
    }
    throw Astray(QStringLiteral("'%1' does not show '%2'").arg(grid->objectName(), text));
}

void Actor::typeInto(QWidget *field, const QString &text)
{
    click(field);
    waitUpToThat([field] { return field->hasFocus(); });
    auto *line = qobject_cast<QLineEdit *>(field);
    if (line)
        line->selectAll();
    for (const QChar &character : text) {
        if (character.unicode() < 0x80) {
            QTest::keyClick(handleOf(field), character.toLatin1());
            continue;
        }
        QInputMethodEvent syllable;
        syllable.setCommitString(character);
        QCoreApplication::sendEvent(field, &syllable);
    }
    settle();
}

void Actor::press(QWidget *window, Qt::Key key)
{
    QTest::keyClick(handleOf(window), key);
    settle();
}

void Actor::inModalWindow(const std::function<void()> &trigger, const std::function<void(QWidget *)> &act)
{
    // The trigger does not return while the modal window stands, so a timer of the window's own loop acts in it.
    bool acted = false;
    const QWidget *before = QApplication::activeModalWidget(); // a dialog may open another one
    std::exception_ptr failure;
    QElapsedTimer waited;
    waited.start();
    QTimer watch;
    watch.setInterval(20);
    QObject::connect(&watch, &QTimer::timeout, [&] {
        QWidget *modal = QApplication::activeModalWidget();
        if (acted || !modal || modal == before || !modal->isVisible())
            return;
        // Keys typed before the desktop has made it the active window would be lost.
        if (!modal->isActiveWindow() && waited.elapsed() < desktopTakes)
            return;
        acted = true;
        try {
            settle();
            act(modal);
        } catch (...) {
            failure = std::current_exception();
        }
        if (QWidget *left = QApplication::activeModalWidget(); left == modal)
            modal->close();
    });
    watch.start();
    trigger();
    while (!acted && waited.elapsed() < 2LL * desktopTakes)
        settle();
    watch.stop();
    if (failure)
        std::rethrow_exception(failure);
    if (!acted)
        throw Astray(QStringLiteral("no box or dialog appeared"));
}

void goTo(Actor &actor, QWidget *sale, Tab tab)
{
    actor.control<QTabWidget>(sale, QStringLiteral("c1tabMain"))->setCurrentIndex(tab);
    settle();
}

} // namespace walk
