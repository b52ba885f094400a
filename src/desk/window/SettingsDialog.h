#pragma once

#include "platform/ado/Connection.h"

#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>

namespace desk {

/// This desk's settings: the printer of roll receipts, the central server's call sign, where errors are noted, and the way
/// back to the windows' first places.
///
/// Names of its controls: cboReceiptPrinter, txtCallSign, txtLogFolder, cmdOpenLog, cmdResetWindows, cmdSave, cmdCancel.
class SettingsDialog : public QDialog
{
    Q_OBJECT
public:
    SettingsDialog(const ado::ConnectionPtr &connection, QWidget *parent);

private:
    QWidget *makePrinter();
    QWidget *makeServer();
    QWidget *makeLog();
    QWidget *makeWindows();
    QLayout *makeButtons();
    void readPrinters();
    void readCallSign();
    void save();
    void openLog();
    void resetWindows();

    ado::ConnectionPtr connection_;
    QComboBox *printer_;
    QLineEdit *callSign_;
    QString storedCallSign_;
    QLineEdit *logFolder_;
    QPushButton *openLog_;
    QPushButton *resetWindows_;
    QPushButton *save_;
    QPushButton *cancel_;
};

} // namespace desk
