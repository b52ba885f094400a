#include "settings/modFormLocate.h"

#include "settings/clsFormSizePosSetting.h"

#include <QGuiApplication>
#include <QResizeEvent>
#include <QScreen>
#include <QStyle>

#include <algorithm>
#include <optional>

namespace {

// Window state numbers as they are stored.
constexpr int normalState = 0;
constexpr int maximizedState = 2;

std::optional<int> numberIn(const QString &text)
{
    bool isNumber = false;
    const int number = text.trimmed().toInt(&isNumber);
    return isNumber ? std::optional(number) : std::nullopt;
}

/// Nothing as well for what no screen is wide enough for: widths are added up.
std::optional<int> columnWidthIn(const QString &text)
{
    constexpr int widest = 100'000;
    const std::optional<int> width = numberIn(text);
    return width && *width > 0 && *width <= widest ? width : std::nullopt;
}

/// Where the window stands, or goes back to when it is maximized or minimized.
QRect normalGeometry(const QWidget &window)
{
    if (window.isMaximized() || window.isMinimized())
        return window.normalGeometry();
    return {window.pos(), window.size()};
}

QRect screenAt(const QPoint &place)
{
    const QScreen *screen = QGuiApplication::screenAt(place);
    return (screen ? screen : QGuiApplication::primaryScreen())->availableGeometry();
}

/// Left and top win over right and bottom: the caption has to stay within reach.
QPoint placeWithin(const QRect &screen, const QPoint &place, const QSize &outer)
{
    return {std::max(screen.left(), std::min(place.x(), screen.right() + 1 - outer.width())),
            std::max(screen.top(), std::min(place.y(), screen.bottom() + 1 - outer.height()))};
}

void restorePlace(QWidget &window, const clsFormSizePosSetting &setting)
{
    const QPoint place(numberIn(setting.FormPos_x()).value_or(window.x()),
                       numberIn(setting.FormPos_y()).value_or(window.y()));
    const QRect screen = screenAt(place);
    const QSize frame = window.frameSize() - window.size(); // caption and borders
    QSize size(numberIn(setting.FormWidth()).value_or(window.width()),
               numberIn(setting.FormHeight()).value_or(window.height()));
    size = size.boundedTo(screen.size() - frame).expandedTo(window.minimumSizeHint());
    window.resize(size);
    window.move(placeWithin(screen, place, size + frame));
}

void restoreColumns(QSplitter &columns, const clsFormSizePosSetting &setting)
{
    QList<int> widths = columns.sizes();
    if (widths.size() < 3)
        return;
    const int total = columns.contentsRect().width() - 2 * columns.handleWidth();
    const std::optional<int> first = columnWidthIn(setting.FirstColWidth());
    const std::optional<int> second = columnWidthIn(setting.SecondColWidth());
    if (!first || !second)
        return;
    widths[0] = *first;
    widths[1] = *second;
    widths[2] = columnWidthIn(setting.ThirdColWidth()).value_or(std::max(total - *first - *second, 1));
    columns.setSizes(widths);
}

/// A desktop enlarges a window some time after it was asked to, and the columns stretch with it, away from the stored
/// widths. Those are set once more when that happens, and never after the user touched the columns.
class WidthsOfTheMaximized : public QObject
{
public:
    WidthsOfTheMaximized(const QWidget &window, QSplitter &columns)
        : QObject(&columns)
        , window_(window)
        , columns_(columns)
    {
        delete columns.findChild<QObject *>(name(), Qt::FindDirectChildrenOnly); // of an earlier restoring
        setObjectName(name());
        columns.installEventFilter(this);
        connect(&columns, &QSplitter::splitterMoved, this, &QObject::deleteLater);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() != QEvent::Resize || done_)
            return false;
        const auto *resize = static_cast<QResizeEvent *>(event);
        if (resize->size().width() == resize->oldSize().width())
            return false;
        done_ = true;
        if (window_.isMaximized())
            restoreColumns(columns_, clsFormSizePosSetting());
        deleteLater();
        return false;
    }

private:
    static QString name() { return QStringLiteral("widthsOfTheMaximized"); }

    const QWidget &window_;
    QSplitter &columns_;
    bool done_ = false;
};

} // namespace

void saveMainWindowLayout(const QWidget &window, const QSplitter *columns)
{
    clsFormSizePosSetting setting;
    const QRect geometry = normalGeometry(window);
    if (columns) {
        setting.FirstColWidth(QString::number(columns->sizes().value(0)));
        setting.SecondColWidth(QString::number(columns->sizes().value(1)));
    }
    setting.FormIsMaximized(QString::number(window.isMaximized() ? maximizedState : normalState));
    setting.FormPos_y(QString::number(geometry.y()));
    setting.FormPos_x(QString::number(geometry.x()));
    setting.FormWidth(QString::number(geometry.width()));
    setting.FormHeight(QString::number(geometry.height()));
}

void restoreMainWindowLayout(QWidget &window, QSplitter &columns)
{
    const clsFormSizePosSetting setting;
    const bool maximized = numberIn(setting.FormIsMaximized()) == maximizedState;
    restorePlace(window, setting);
    if (maximized) {
        window.setWindowState((window.windowState() & ~Qt::WindowMinimized) | Qt::WindowMaximized);
        new WidthsOfTheMaximized(window, columns); // owned by the columns
    }
    restoreColumns(columns, setting);
}

void keepOnScreen(QWidget &window)
{
    QSize outer = window.frameSize();
    if (outer == window.size()) { // the frame comes with the first showing
        const QWidget *owner = window.parentWidget() ? window.parentWidget()->window() : nullptr;
        if (owner && owner->isVisible() && owner->frameSize() != owner->size())
            outer += owner->frameSize() - owner->size(); // framed alike
        else
            outer.rheight() += window.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &window);
    }
    window.move(placeWithin(screenAt(window.geometry().center()), window.pos(), outer));
}
