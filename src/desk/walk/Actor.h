#pragma once

#include <QAbstractButton>
#include <QString>
#include <QTableView>
#include <QWidget>

#include <functional>
#include <stdexcept>

namespace walk {

/// Raised when the window does not answer as the road says it must.
class Astray : public std::runtime_error
{
public:
    explicit Astray(const QString &what)
        : std::runtime_error(what.toStdString())
    {
    }
};

/// A person at the desk: says each step on the terminal, finds controls by name, acts with real key and mouse events and
/// leaves pictures of what stands on the screen.
class Actor
{
public:
    /// Pictures go to the folder as 01-name.png, 02-name.png ...; once more for each desk size that ZELVO_WALK_DESKS names.
    explicit Actor(const QString &folder);

    const QString &folder() const { return folder_; }
    void say(const QString &sentence);
    void picture(const QString &name, QWidget *window);

    /// A visible top-level window by name; waits until it shows. Raises Astray.
    QWidget *window(const QString &name, int milliseconds = 5000) const;
    /// A control of a window by name. Raises Astray.
    template <typename Control = QWidget>
    Control *control(QWidget *window, const QString &name) const
    {
        auto *found = window->findChild<Control *>(name);
        if (!found)
            throw Astray(QStringLiteral("'%1' is missing").arg(name));
        return found;
    }

    void click(QWidget *control);
    /// Clicks an item that is in view.
    void clickItem(QAbstractItemView *view, const QModelIndex &item);
    /// Clicks the first visible cell of a row.
    void clickRow(QTableView *grid, int row);
    /// Clicks the first visible cell that shows this text. Raises Astray.
    void clickCell(QTableView *grid, const QString &text);
    /// Puts the focus there, selects what stands there and types over it; Hangul comes as from an input method.
    void typeInto(QWidget *field, const QString &text);
    void press(QWidget *window, Qt::Key key);

    /// Runs `trigger`, which opens a modal window, and acts in that window before it closes.
    void inModalWindow(const std::function<void()> &trigger, const std::function<void(QWidget *)> &act);

private:
    QString folder_;
    int pictures_ = 0;
    int steps_ = 0;
};

/// Lets pending events and paints happen.
void settle(int milliseconds = 30);

enum Tab { SaleTab, ManageTab, StatisticsTab, PropertiesTab };

/// Brings a tab of the sale window to the front.
void goTo(Actor &actor, QWidget *saleWindow, Tab tab);

} // namespace walk
