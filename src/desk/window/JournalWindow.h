#pragma once

#include "desk/window/JournalModel.h"
#include "desk/window/Patient.h"
#include "platform/controls/DateEdit.h"

#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QWidget>

namespace desk {

/// Who did what: everything that happened to a patient's orders, or what was changed and deleted on a day.
///
/// Names of its controls: optPatient, optDay, dtpDay, cmdRead, cmdCsv, cmdPrint, tblJournal, lblState; its own is
/// journalWindow.
class JournalWindow : public QWidget
{
    Q_OBJECT
public:
    /// Without a patient it begins with the day. Raises RuntimeError where there is no journal, or none for this desk.
    JournalWindow(const ado::ConnectionPtr &connection, const std::optional<Patient> &patient,
                  QWidget *parent = nullptr);

    /// Reads anew.
    void refresh();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    QLayout *makeHead();
    void makeTable();
    void connectControls();
    QString title() const;
    QString fileName() const; ///< of what is saved, without its ending
    void saveCsv();
    void print();

    ado::ConnectionPtr connection_;
    const std::optional<Patient> patient_;
    JournalModel *model_;
    QRadioButton *ofPatient_;
    QRadioButton *ofDay_;
    controls::DateEdit *day_;
    QPushButton *read_;
    QPushButton *csv_;
    QPushButton *print_;
    QTableView *table_;
    QLabel *state_;
};

} // namespace desk
