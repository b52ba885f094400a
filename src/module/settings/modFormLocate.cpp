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

const QString normalPlaceName = QStringLiteral("normalPlace");

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

/// Where the window's inner area stood when it was last neither maximized nor minimized. The toolkit's normalGeometry() does
/// not always tell: a desktop sends the large size ahead of the state that explains it, and hides a window unasked. Not the
/// frame either: that comes from the desktop some time after the showing, and a window placed by its frame before that moves
/// with every start.
class NormalPlace : public QObject
{
public:
    explicit NormalPlace(QWidget &window)
        : QObject(&window)
        , window_(window)
    {
        setObjectName(normalPlaceName);
        note();
        settled_.setSingleShot(true);
        settled_.setInterval(settlingTime);
        connect(&settled_, &QTimer::timeout, this, [this] { note(); });
        window.installEventFilter(this);
    }

    /// Null when nobody watches the window.
    static NormalPlace *of(const QWidget &window)
    {
        return static_cast<NormalPlace *>(window.findChild<QObject *>(normalPlaceName, Qt::FindDirectChildrenOnly));
    }

    void note()
    {
        if (!window_.isMaximized() && !window_.isMinimized())
            place_ = window_.geometry();
    }
    const QRect &place() const { return place_; }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Move || event->type() == QEvent::Resize)
            settled_.start();
        return false;
    }

private:
    static constexpr std::chrono::milliseconds settlingTime{200};

    QWidget &window_;
    QTimer settled_;
    QRect place_;
};

QRect normalGeometry(const QWidget &window)
{
    if (!window.isMaximized() && !window.isMinimized())
        return window.geometry();
    const NormalPlace *watched = NormalPlace::of(window);
    return watched ? watched->place() : window.normalGeometry();
}

/// Caption and borders; a caption's usual height where the desktop has given none yet.
QMargins frameOf(const QWidget &window)
{
    const QRect inner = window.geometry();
    const QRect outer = window.frameGeometry();
    if (inner == outer)
        return {0, window.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &window), 0, 0};
    return {inner.left() - outer.left(), inner.top() - outer.top(), outer.right() - inner.right(),
            outer.bottom() - inner.bottom()};
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
    const std::optional<int> stored[] = {columnWidthIn(setting.FirstColWidth()),
                                         columnWidthIn(setting.SecondColWidth()),
                                         columnWidthIn(setting.ThirdColWidth())};
    if (!stored[0] && !stored[1] && !stored[2])
        return;
    for (int column = 0; column < 3; ++column)
        widths[column] = stored[column].value_or(widths[column]);
    // What the others leave goes to the last one that has no width of its own.
    for (int column = 2; column >= 0; --column) {
        if (stored[column])
            continue;
        widths[column] = std::max(total - widths[(column + 1) % 3] - widths[(column + 2) % 3], 1);
        break;
    }
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

void watchNormalPlace(QWidget &window)
{
    if (!NormalPlace::of(window))
        new NormalPlace(window); // owned by the window
}

void restoreMainWindowLayout(QWidget &window, QSplitter &columns)
{
    const clsFormSizePosSetting setting;
    // A maximized window has its size from the desktop, which another one would only part from what is inside.
    if (!window.isMaximized()) {
        restorePlace(window, setting);
        watchNormalPlace(window);
        NormalPlace::of(window)->note();
        if (numberIn(setting.FormIsMaximized()) == maximizedState)
            window.setWindowState((window.windowState() & ~Qt::WindowMinimized) | Qt::WindowMaximized);
    }
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
