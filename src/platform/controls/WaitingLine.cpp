#include "platform/controls/WaitingLine.h"

#include "platform/ado/Waiting.h"
#include "platform/controls/Appearance.h"
#include "platform/controls/EventEdge.h"
#include "platform/controls/Named.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QLabel>
#include <QMouseEvent>
#include <QPointer>
#include <QWindow>

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

namespace controls {

namespace {

/// What would begin other work: the handler that waits has the connection, and the flow that it belongs to comes first.
bool isInput(QEvent::Type type)
{
    static constexpr QEvent::Type inputs[]{QEvent::MouseButtonPress,
                                           QEvent::MouseButtonDblClick,
                                           QEvent::MouseMove,
                                           QEvent::Wheel,
                                           QEvent::KeyPress,
                                           QEvent::KeyRelease,
                                           QEvent::Shortcut,
                                           QEvent::ShortcutOverride,
                                           QEvent::InputMethod,
                                           QEvent::ContextMenu,
                                           QEvent::TouchBegin,
                                           QEvent::TouchUpdate,
                                           QEvent::TouchEnd,
                                           QEvent::TabletPress,
                                           QEvent::TabletMove,
                                           QEvent::TabletRelease,
                                           QEvent::DragEnter,
                                           QEvent::DragMove,
                                           QEvent::Drop,
                                           QEvent::NativeGesture};
    return std::ranges::find(inputs, type) != std::end(inputs);
}

QWidget *windowInFront()
{
    if (QWidget *modal = QApplication::activeModalWidget())
        return modal;
    if (QWidget *active = QApplication::activeWindow())
        return active;
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto shown = std::ranges::find_if(
        windows, [](const QWidget *one) { return one->isVisible() && one->windowType() == Qt::Window; });
    return shown == windows.end() ? nullptr : *shown;
}

/// Bubbles and lists that drop down: nobody who closes one wants to leave.
bool goesByItself(const QWidget &window)
{
    return window.windowType() == Qt::ToolTip || window.windowType() == Qt::Popup;
}

/// Over a dialog the handler that opened it is at work until it has closed.
bool isAtWork(const QWidget &window)
{
    return window.isModal() ? eventRunsIn(window) : eventRuns();
}

/// Nothing may be painted under a painting.
bool isPainting()
{
    const QWidgetList widgets = QApplication::allWidgets();
    return std::ranges::any_of(widgets,
                               [](const QWidget *one) { return one->testAttribute(Qt::WA_WState_InPaintEvent); });
}

class WaitingLine : public QObject, public ado::Patience
{
public:
    /// Only within a handler of ours: what else waits, as a statement of the host's own, is not prepared for it.
    bool mayBegin() override { return eventRuns() && qApp; }
    bool begin() override;
    bool goOn() override;
    void end() override;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void place();
    bool putOff(QObject *closing, QEvent *event);
    void dropInput(QEvent *event);

    /// The second half of a click whose first half came before the wait: without it the control would stay pressed.
    struct Release
    {
        QPointer<QObject> of;
        std::unique_ptr<QEvent> event;
    };

    QPointer<QLabel> line_;
    QPointer<QWidget> closing_; ///< closes when the handler has ended
    Qt::MouseButtons pressed_;  ///< meanwhile
    std::vector<Release> releases_;
};

bool WaitingLine::begin()
{
    QWidget *const window = windowInFront();
    if (!window || isPainting())
        return false;
    line_ = named(new QLabel(QStringLiteral("다시 연결 중  ·  서버의 응답을 기다리고 있습니다."), window),
                  QStringLiteral("lblWaiting"));
    line_->setTextFormat(Qt::PlainText);
    line_->setAlignment(Qt::AlignCenter);
    line_->setWordWrap(true); // a dialog may be narrow, and letters large
    line_->setMargin(6);
    setGround(line_, Ground::Tip);
    place();
    line_->show();
    line_->raise();
    qApp->installEventFilter(this);
    return true;
}

bool WaitingLine::goOn()
{
    // Sockets of a host's may carry its commands. A few rounds, not until nothing is left: a timer that stands is due for ever.
    for (int round = 0; round < 3; ++round)
        QCoreApplication::processEvents(QEventLoop::ExcludeSocketNotifiers);
    return !closing_;
}

void WaitingLine::end()
{
    qApp->removeEventFilter(this);
    delete line_;
    pressed_ = {};
    for (Release &release : std::exchange(releases_, {})) {
        if (release.of)
            QCoreApplication::postEvent(release.of, release.event.release());
    }
    // Cells that were not read yet stayed empty.
    const QWidgetList widgets = QApplication::allWidgets();
    for (QWidget *widget : widgets) {
        if (auto *list = qobject_cast<QAbstractItemView *>(widget))
            list->viewport()->update();
    }
}

void WaitingLine::place()
{
    const QWidget *window = line_->parentWidget();
    const int height = line_->heightForWidth(window->width());
    line_->setGeometry(0, window->height() - height, window->width(), height);
}

/// The user wants to go, not to wait: what becomes of the statement is told, then the window closes.
bool WaitingLine::putOff(QObject *closing, QEvent *event)
{
    auto *window = qobject_cast<QWidget *>(closing);
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *one : windows) {
        if (!window && one->windowHandle() == closing)
            window = one;
    }
    if (!window || !window->isWindow() || goesByItself(*window))
        return false;
    event->ignore();
    if (!closing_)
        runWhenFree([this] { return closing_ && isAtWork(*closing_); },
                    [this] {
                        if (QWidget *leaving = std::exchange(closing_, nullptr))
                            leaving->close();
                    });
    closing_ = window;
    return true;
}

void WaitingLine::dropInput(QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride)
        event->accept(); // so that it is none
    else if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick)
        pressed_ |= static_cast<QMouseEvent *>(event)->button();
}

bool WaitingLine::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Timer)
        return !watched->isWindowType(); // it comes again
    if (event->type() == QEvent::Close)
        return putOff(watched, event);
    if (event->type() == QEvent::MouseButtonRelease) {
        const Qt::MouseButton button = static_cast<QMouseEvent *>(event)->button();
        if (!pressed_.testFlag(button))
            releases_.push_back({watched, std::unique_ptr<QEvent>(event->clone())});
        pressed_.setFlag(button, false);
        return true;
    }
    if (isInput(event->type())) {
        dropInput(event);
        return true;
    }
    if (event->type() == QEvent::Resize && line_ && watched == line_->parentWidget())
        place();
    return false;
}

} // namespace

void showWaitingLine()
{
    static WaitingLine line;
    ado::setPatience(&line);
}

} // namespace controls
