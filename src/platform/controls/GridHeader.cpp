#include "platform/controls/GridHeader.h"

#include "platform/controls/Named.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QPointer>

#include <algorithm>
#include <utility>

namespace controls {

GridHeader::GridHeader(QWidget *parent)
    : QHeaderView(Qt::Horizontal, parent)
{
    setSectionsClickable(true);
    setSectionsMovable(true);
    setHighlightSections(false);
    setStretchLastSection(true);
    setMinimumSectionSize(24);
    setResizeContentsPrecision(0); // a double click on a divider looks at visible rows only
    const auto noteDrag = [this] { dragged_ = dragged_ || pressed_; };
    connect(this, &QHeaderView::sectionMoved, this, noteDrag);
    connect(this, &QHeaderView::sectionResized, this, noteDrag);
    connect(this, &QHeaderView::sectionClicked, this, [this](int column) { clicked_ = column; });
}

void GridHeader::offerColumns(std::vector<int> columns)
{
    offered_ = std::move(columns);
}

void GridHeader::mousePressEvent(QMouseEvent *event)
{
    pressed_ = true;
    QHeaderView::mousePressEvent(event);
}

void GridHeader::mouseDoubleClickEvent(QMouseEvent *event)
{
    pressed_ = true;
    QHeaderView::mouseDoubleClickEvent(event);
}

void GridHeader::mouseReleaseEvent(QMouseEvent *event)
{
    QHeaderView::mouseReleaseEvent(event); // a move happens only now
    pressed_ = false;
    const int clicked = std::exchange(clicked_, -1);
    const QPointer<GridHeader> alive(this);
    if (std::exchange(dragged_, false))
        emit changedByUser();
    if (alive && clicked >= 0)
        emit headClicked(clicked);
}

QSize GridHeader::sectionSizeFromContents(int column) const
{
    if (!model())
        return QHeaderView::sectionSizeFromContents(column);
    Drawn now{font(), style(), logicalDpiX()};
    if (now != measuredAs_) {
        measured_.clear();
        measuredAs_ = std::move(now);
    }
    measured_.resize(std::max(measured_.size(), std::size_t(column) + 1));
    Measured &known = measured_[std::size_t(column)];
    const QString caption = model()->headerData(column, Qt::Horizontal).toString();
    if (!known.size.isValid() || known.caption != caption)
        known = {caption, QHeaderView::sectionSizeFromContents(column)};
    return known.size;
}

int GridHeader::shownCount() const
{
    return int(
        std::count_if(offered_.begin(), offered_.end(), [this](int column) { return !isSectionHidden(column); }));
}

void GridHeader::contextMenuEvent(QContextMenuEvent *event)
{
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const int column : offered_) {
        const QString caption = model()->headerData(column, Qt::Horizontal).toString();
        QAction *action = menu->addAction(literalCaption(caption));
        action->setCheckable(true);
        action->setChecked(!isSectionHidden(column));
        action->setEnabled(isSectionHidden(column) || shownCount() > 1); // one column always stays
        connect(action, &QAction::triggered, this, [this, column](bool shown) {
            setSectionHidden(column, !shown);
            emit changedByUser();
        });
    }
    menu->addSeparator();
    connect(menu->addAction(QStringLiteral("처음 배치로 되돌리기")), &QAction::triggered, this,
            &GridHeader::designAsked);
    menu->popup(event->globalPos());
}

} // namespace controls
