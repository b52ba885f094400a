#pragma once

#include "platform/controls/RecordsetGrid.h"
#include "platform/controls/RowSearch.h"
#include "platform/controls/SearchBox.h"

#include <QLabel>
#include <QTimer>
#include <QWidget>

namespace controls {

/// The line above a grid by which a row is looked for. It moves to the first row that fits and marks all of them; it hides
/// none and changes no order. Enter and F3 go to the next one, Shift+F3 to the one before, round the list's end; Down goes
/// into the grid, where F3 still works; Esc clears the line. It outlives no grid: both lie in one window.
class FindBar : public QWidget
{
    Q_OBJECT
public:
    struct Design
    {
        QString name; ///< "Product" makes txtFindProduct and lblFindProduct
        QString what; ///< "물품": what the rows are
        QString placeholder;
        QStringList fields;     ///< that are searched, by their columns
        QString codeField = {}; ///< where a code may stand that a scanner types; see codeEntered()
        RowSearch::Reading reading = {};
    };

    FindBar(RecordsetGrid *grid, const Design &design, QWidget *parent = nullptr);

    SearchBox *box() const { return box_; }
    /// Puts the focus into the line, its text selected.
    void takeFocus();
    void clear() { box_->clear(); }

signals:
    /// Enter behind a code that one row alone holds as a whole word; that row is current now.
    void codeEntered();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void search();
    void catchUp();
    void rowsCameAnew();
    bool prepare();
    void mark();
    void goOn();
    void step(int by);
    int rowOfCode() const;
    int placeOfCurrent() const;
    void showPlace();
    QString placeText() const;
    void fixPlace();
    bool takesKey(const QObject *watched, const QKeyEvent &event) const;
    void keyPressed(const QKeyEvent &event);

    RecordsetGrid *grid_;
    SearchBox *box_;
    QLabel *place_;
    RowSearch rows_;
    const QString codeField_;
    std::vector<int> hits_;
    QTimer later_; ///< rows that come anew come in several steps
    bool failed_ = false;
};

} // namespace controls
