#pragma once

#include "platform/ado/Foresight.h"

#include <QPointer>
#include <QTableView>

#include <functional>
#include <memory>
#include <vector>

namespace controls {

/// One column of a bound grid.
struct GridColumn
{
    enum class Kind {
        Text,
        Money,   ///< the won sign with grouping
        Date,    ///< "2026-11-24"
        Number,  ///< right-aligned, as it is
        Check,   ///< a check mark; checked when the value's text equals checkedText (flags: "True")
        Values,  ///< translated by `values`, unknown ones as they are
        Unbound, ///< fetched row by row through the grid's fetch function
    };
    struct Item
    {
        QString stored; ///< text of the stored value; NULL is a null QString
        QString shown;
    };

    QString field;
    QString caption;
    Kind kind = Kind::Text;
    int width = 0; ///< at least, in pixels at 96 dpi; what its caption and kind need in the font of now comes on top
    bool visible = true;
    bool editable = false; ///< a text cell typed into, or a check cell toggled by a click, or by the blank key on it
    std::vector<Item> values = {};
    QString checkedText = QStringLiteral("True");
    QString format = {}; ///< of a money column, instead of the won sign with grouping (see runtime::Format)
    bool fills = false;  ///< takes the room that is left, until the user has a layout of his own
};

/// A grid bound both ways to a recordset's position. The recordset moves first, then the handlers of rowChange() run,
/// each inside an event edge. A change of column alone raises nothing.
class RecordsetGrid : public QTableView
{
    Q_OBJECT
public:
    explicit RecordsetGrid(QWidget *parent = nullptr);
    ~RecordsetGrid() override;

    void setColumns(std::vector<GridColumn> columns);
    const std::vector<GridColumn> &columns() const;

    /// Binds a recordset, which the caller owns and keeps alive while it is bound; null unbinds.
    void setDataSource(ado::Recordset *recordset);
    ado::Recordset *dataSource() const;
    /// Reads the view anew without moving; drops fetched cells of unbound columns.
    void Rebind();
    /// Repaints what is cached.
    void Refresh();
    /// Makes the row current as the user's step onto it does, with all that is raised by one.
    void chooseRow(int row);
    /// Marks the rows that a search found, ascending, and no others; the marks go when rows come anew or go.
    void setFoundRows(std::vector<int> rows);
    /// The current row bears no mark until a change of row is raised: the panes behind the grid show nothing of it yet.
    void leaveUnchosen();
    /// As a click on the current row does, where it is unchosen.
    void chooseRow();
    /// What stands in the place of rows while there are none.
    void setEmptyText(const QString &text);
    /// Deletes the current row through the recordset; errors go to the caller.
    void Delete();
    /// Value of a field in the current row, the typed text while a cell is in edit.
    QVariant columnValue(const QString &field) const;

    /// Text of an unbound cell, asked for visible rows only and kept until Rebind or a requery.
    using UnboundFetch = std::function<QString(const ado::Bookmark &row, int column)>;
    void setUnboundFetch(UnboundFetch fetch);
    /// Fetches now what a painting would, so that all else can be painted while a server is waited for.
    void fetchInSight();
    /// Has painted what a painting under a wait had to leave out.
    void paintLeftOut();
    /// What a step of the user onto that row reads, with all that its handlers read: stands until they are through.
    using StepForesight = std::function<ado::Foresight(int row)>;
    void setStepForesight(StepForesight foresight);
    /// Called before a typed text is taken; may replace it.
    using BeforeUpdate = std::function<void(int column, QString &typed)>;
    void setBeforeColumnUpdate(BeforeUpdate before);

    // The user's column layout: order, widths, visibility.
    /// Takes the layout of that name from the file; false, and the designed columns stay, when there is none or it is not ours.
    bool loadLayout(const QString &file, const QString &layoutName);
    /// Raises RuntimeError when the file cannot be written.
    void saveLayout(const QString &file, const QString &layoutName) const;
    /// Brings the designed columns back.
    void resetLayout();

    /// Does nothing: looking for a typed text would read every row.
    void keyboardSearch(const QString &search) override;

signals:
    /// The current row is a new one, or may be (see Recordset::rowChanged).
    void rowChange();
    void headClick(int column);
    /// A double click on a row, or on none while no row is current.
    void rowDoubleClicked();
    /// A typed or toggled value has been assigned to the field; the handler saves it.
    void afterColumnUpdate(int column);
    /// The user moved, sized or hid a column (after the mouse button was released).
    void layoutChanged(bool byUser);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    void selectionChanged(const QItemSelection &selected, const QItemSelection &deselected) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex &index, const QEvent *event) const override;

private:
    /// Tells a screen reader of a cell.
    void tellOf(const QModelIndex &cell, int accessibleEvent);

    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace controls
