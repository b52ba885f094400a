#pragma once

#include <QHeaderView>

#include <vector>

namespace controls {

/// The captions of a bound grid. Columns are moved and sized by dragging, hidden and shown from a menu.
class GridHeader : public QHeaderView
{
    Q_OBJECT
public:
    explicit GridHeader(QWidget *parent);

    /// Columns that the menu offers; the rest stays as it was designed.
    void offerColumns(std::vector<int> columns);

signals:
    /// As sectionClicked(), but only when Qt is through with the mouse: a handler may open a box, and the window may go
    /// beneath it.
    void headClicked(int column);
    /// The user moved, sized, hid or showed a column; after the mouse button was released.
    void changedByUser();
    /// The user asks for the designed columns.
    void designAsked();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    int shownCount() const;

    std::vector<int> offered_;
    bool pressed_ = false;
    bool dragged_ = false;
    int clicked_ = -1; ///< not told yet
};

} // namespace controls
