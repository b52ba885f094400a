#include "platform/controls/TabWidget.h"

#include <QEvent>
#include <QPointer>
#include <QStyleOptionTabWidgetFrame>
#include <QTabBar>

#include <utility>

namespace controls {

class TabWidget::Bar : public QTabBar
{
public:
    explicit Bar(TabWidget *owner)
        : QTabBar(owner)
        , owner_(owner)
    {
    }

    /// The bar outlives the owner's own part.
    void ownerGoes() { owner_ = nullptr; }

protected:
    bool event(QEvent *event) override
    {
        if (!owner_)
            return QTabBar::event(event);
        return owner_->thenTell([&] { return QTabBar::event(event); });
    }

private:
    TabWidget *owner_;
};

TabWidget::TabWidget(QWidget *parent)
    : QTabWidget(parent)
    , bar_(new Bar(this))
{
    bar_->setObjectName(tabBar()->objectName());
    setTabBar(bar_);
    connect(this, &QTabWidget::currentChanged, this, [this](int tab) {
        if (inQt_)
            chosen_ = tab;
        else
            emit turnedTo(tab);
    });
}

TabWidget::~TabWidget()
{
    bar_->ownerGoes();
}

bool TabWidget::event(QEvent *event)
{
    if (event->type() == QEvent::LayoutRequest && isVisible() && !needsOtherRoom())
        return true;
    return thenTell([&] { return QTabWidget::event(event); });
}

/// The stock tabs place their parts anew, and paint all that is within, for each control of a page that comes or goes.
bool TabWidget::needsOtherRoom()
{
    const QWidget *const pages = currentWidget() ? currentWidget()->parentWidget() : this;
    const Room room{bar_->sizeHint(), bar_->minimumSizeHint(), pages->sizeHint(), pages->minimumSizeHint()};
    return std::exchange(room_, room) != room;
}

/// The stock tabs give their pages a place only when these are on the screen already: the page in front would be laid out for
/// a size of its own first, and a second time for the one that it gets.
void TabWidget::resizeEvent(QResizeEvent *event)
{
    QTabWidget::resizeEvent(event);
    if (isVisible() || !currentWidget())
        return;
    QStyleOptionTabWidgetFrame frame;
    initStyleOption(&frame);
    currentWidget()->parentWidget()->setGeometry(
        style()->subElementRect(QStyle::SE_TabWidgetTabContents, &frame, this));
}

template <typename Handle>
bool TabWidget::thenTell(Handle handle)
{
    const QPointer<TabWidget> alive(this);
    ++inQt_;
    const bool handled = handle();
    if (alive && --inQt_ == 0 && chosen_ >= 0)
        emit turnedTo(std::exchange(chosen_, -1));
    return handled;
}

} // namespace controls
