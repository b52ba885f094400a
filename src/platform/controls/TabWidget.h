#pragma once

#include <QSize>
#include <QTabWidget>

#include <array>

namespace controls {

/// Tabs whose owner may open a box for the tab that was chosen: the window may go beneath it.
class TabWidget : public QTabWidget
{
    Q_OBJECT
public:
    explicit TabWidget(QWidget *parent = nullptr);
    ~TabWidget() override;

signals:
    /// Another tab is current: as currentChanged(), but for a mouse or key only when Qt is through with the event.
    void turnedTo(int tab);

protected:
    bool event(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    class Bar;

    /// Runs Qt's own handling of an event of this widget or its bar, then tells of the tab that it chose.
    template <typename Handle>
    bool thenTell(Handle handle);

    using Room = std::array<QSize, 4>;

    /// Whether the bar or the pages ask for more or less room than when last asked.
    bool needsOtherRoom();

    Room room_;
    int inQt_ = 0;
    int chosen_ = -1; ///< not told yet
    Bar *bar_;        ///< last: its making is an event here already
};

} // namespace controls
