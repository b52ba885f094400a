#pragma once

#include "forms/BoundList.h"
#include "forms/PaneContract.h"
#include "platform/controls/FindBar.h"
#include "platform/controls/PushCheck.h"
#include "products/RecordSave.h"
#include "session/SaleSession.h"

#include <QWidget>

#include <functional>
#include <vector>

/// What the lists of the management tab have in common: the list, the panel of its current row, and the strip of buttons
/// that add a row, edit it, delete it, and end an edit.
class RecordEditor : public QWidget
{
    Q_OBJECT
public:
    bool isLoaded() const { return list_.isLoaded(); }
    /// For a list that could not be loaded before; errors end here, told to nobody.
    void loadIfClosed();
    /// Clears the panel.
    virtual void resetPane() = 0;
    /// Shows the current row, or clears the panel; a panel in edit is left alone. A row that another desk deleted is told,
    /// and none is current then.
    void fillPanel();

    EditModeTable editMode() const;
    /// Leaves an edit under way without saving; whether there was one.
    bool abandonEdit();
    controls::RecordsetGrid *grid() const { return grid_; }
    controls::FindBar *search() const { return search_; } ///< null without makeSearch()

protected:
    enum Command { Add, Edit, Delete };
    /// What a save is to do. It says nothing of whether the panel is in edit; the shell does.
    enum Mode : qint16 { Neither = -1, Adds = 0, Changes = 1 };

    struct Texts
    {
        QString editCode;
        QString kind;  ///< what a row is called
        QString title; ///< of a box about the list
    };

    /// `rows`: of the session.
    RecordEditor(SaleSession &session, PaneShell &shell, SaleSession::RecordsetPtr &rows, Texts texts, QWidget *parent);

    // For the constructor of a pane, in this order. `index` is -1 where the name stands alone.
    void makeList(const QString &frame, int index, const QString &caption, const QString &grid,
                  std::vector<controls::GridColumn> columns);
    /// The line above the list by which rows are found.
    void makeSearch(const controls::FindBar::Design &design);
    void makePanel(const QString &frame, int index);
    /// The strip of commands at the top of the panel.
    void makeStrip(int index, const QString &commands, const QString &saveButtons, const QString &saveCaption);
    /// What stands below the strip.
    void placeInPanel(QLayout *fields);
    void connectControls();

    /// Runs an action of the strip.
    virtual void run(Command command);
    virtual void addRow() = 0;
    virtual void editRow() = 0;
    virtual void deleteRow() = 0;
    virtual void saveRow() = 0;
    /// Loads the list; errors end there, told to nobody.
    virtual void load() = 0;
    virtual void showRow(const ado::Recordset &row) = 0;
    virtual void showNone() { resetPane(); }
    virtual ControlGroup editGroup() const = 0;
    virtual QList<EntryColor> fieldColors() const = 0;
    /// Ends an edit and reads the list anew. `row`: the one that stays current, if it is still there; none, the first.
    /// Errors are trapped: the edit ends even if the list cannot be read.
    virtual void endEdit(const ado::Bookmark &row);

    bool hasRow() const { return SaleSession::hasCurrent(rows_); }
    bool inEdit() const { return shell_.isInEdit(texts_.editCode); }
    void enterEdit(QWidget *firstField);
    void leaveEdit();
    /// The panel stays in edit.
    void refuse(const QString &told, int flags, const QString &title, QWidget *field);
    /// After a save that was not refused. `edited`: the row that was to be changed, if one was.
    void endSave(SaveOutcome outcome, const ado::Bookmark &edited);

    /// False, too, when the pane went beneath the question.
    bool agrees(const QString &question, const QString &title);
    /// Runs what deletes the row. A conflict about a row that is gone is told here; any other error goes on.
    void tellIfGone(const ado::Bookmark &row, const std::function<void()> &remove);
    void leaveGone();
    /// Beside the window's status: the kind of row and what was done with it.
    void tellDone(const QString &what);

    SaleSession &session_;
    PaneShell &shell_;
    SaleSession::RecordsetPtr &rows_;
    BoundList list_;
    qint16 mode_ = Neither;

    QWidget *listFrame_ = nullptr;
    QWidget *panel_ = nullptr;
    QWidget *strip_ = nullptr;
    controls::RecordsetGrid *grid_ = nullptr;
    controls::FindBar *search_ = nullptr;
    QList<controls::PushCheck *> commands_;
    QList<controls::PushCheck *> saveButtons_;

private:
    bool readListAnew(const ado::Bookmark &row);

    const Texts texts_;
};
