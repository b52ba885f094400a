#include "settings/modFormLocate.h"

#include "settings/clsFormSizePosSetting.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QStyle>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <optional>

namespace {

// Window state numbers as they are stored.
constexpr int normalState = 0;
constexpr int maximizedState = 2;

/// What lies beyond every screen comes back as less, so that places and sizes can be added up.
std::optional<int> numberIn(const QString &text)
{
    constexpr int beyondEveryScreen = 100'000'000;
    bool isNumber = false;
    const int number = text.trimmed().toInt(&isNumber);
    return isNumber ? std::optional(std::clamp(number, -beyondEveryScreen, beyondEveryScreen)) : std::nullopt;
}

/// Nothing as well for what no screen is wide enough for: widths are added up.
std::optional<int> columnWidthIn(const QString &text)
{
    constexpr int widest = 100'000;
    const std::optional<int> width = numberIn(text);
    return width && *width > 0 && *width <= widest ? width : std::nullopt;
}

/// Where the window's inner area stands, or goes back to when it is maximized or minimized. Not the frame: that comes from
/// the desktop some time after the showing, and a window placed by its frame before that moves with every start.
QRect normalGeometry(const QWidget &window)
{
    return window.isMaximized() || window.isMinimized() ? window.normalGeometry() : window.geometry();
}

/// Caption and borders; a caption's usual height where the desktop has given none yet.
QMargins frameOf(const QWidget &window)
{
    const QRect inner = window.geometry();
    const QRect outer = window.frameGeometry();
    if (inner == outer)
        return {0, window.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &window), 0, 0};
    return {inner.left() - outer.left(), inner.top() - outer.top(), outer.right() - inner.right(), outer.bottom() - inner.bottom()};
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
    const QPoint place(numberIn(setting.FormPos_x()).value_or(window.geometry().x()),
                       numberIn(setting.FormPos_y()).value_or(window.geometry().y()));
    const QRect screen = screenAt(place);
    const QMargins frame = frameOf(window);
    QSize size(numberIn(setting.FormWidth()).value_or(window.width()),
               numberIn(setting.FormHeight()).value_or(window.height()));
    size = size.boundedTo(screen.size().shrunkBy(frame)).expandedTo(window.minimumSizeHint());
    const QPoint corner(frame.left(), frame.top());
    window.setGeometry({placeWithin(screen, place - corner, size.grownBy(frame)) + corner, size});
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

/// A desktop gives a window its size some time after it was asked to, maximized or not, and the columns stretch with it,
/// away from the stored widths. Those are set again whenever that happens in the first moments, but not once the user has
/// touched the columns.
class SettlingColumns : public QObject
{
public:
    explicit SettlingColumns(QSplitter &columns)
        : QObject(&columns)
        , columns_(columns)
    {
        setObjectName(QStringLiteral("settling"));
        columns.installEventFilter(this);
        connect(&columns, &QSplitter::splitterMoved, this, [this] { end(); });
        QTimer::singleShot(settlingTime, this, [this] { end(); });
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Resize)
            restoreColumns(columns_, clsFormSizePosSetting());
        return false;
    }

private:
    static constexpr std::chrono::milliseconds settlingTime{1500};

    void end()
    {
        columns_.removeEventFilter(this);
        deleteLater();
    }

    QSplitter &columns_;
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
    if (maximized)
        window.setWindowState((window.windowState() & ~Qt::WindowMinimized) | Qt::WindowMaximized);
    restoreColumns(columns, setting);
    new SettlingColumns(columns); // owned by the columns
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
