#pragma once

#include <QFont>
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
    QSize sectionSizeFromContents(int column) const override;

private:
    int shownCount() const;

    /// What captions take. The stock header is asked for it several times while a window comes up, and measures each anew.
    struct Measured
    {
        QString caption;
        QSize size;
    };
    struct Drawn
    {
        QFont font;
        const QStyle *style = nullptr;
        int dpi = 0;

        bool operator==(const Drawn &) const = default;
    };

    std::vector<int> offered_;
    mutable std::vector<Measured> measured_;
    mutable Drawn measuredAs_;
    bool pressed_ = false;
    bool dragged_ = false;
    int clicked_ = -1; ///< not told yet
};

} // namespace controls
