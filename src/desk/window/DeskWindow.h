#pragma once

#include "desk/window/Component.h"
#include "desk/window/GearButton.h"
#include "desk/window/PatientModel.h"
#include "platform/controls/SearchBox.h"

#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QWidget>

namespace ado {
class Foresight;
}

namespace desk {

/// The reception's window: find a patient, open the sale of goods or their management.
///
/// Names of its controls: txtSearch, tblPatients, cmdSale, cmdManage, cmdJournal, cmdChain (at a head office), cmdSettings, lblNotice; its own is
/// deskWindow.
class DeskWindow : public QWidget
{
    Q_OBJECT
public:
    /// Whether it opens with its patients, or is painted first and waits for refresh(): a large file takes longer to read
    /// than all the rest.
    enum class Patients { AtOnce, WhenAsked };

    /// What stands around the patients.
    struct Head
    {
        QString clinicName;
        bool seesClinics = false; ///< of a chain
    };
    static Head readHead(const ado::ConnectionPtr &connection);
    /// Tells what that reads.
    static void foreseeHead(ado::Foresight &next);

    /// Of no clinic yet: nothing may be done in it before open().
    explicit DeskWindow(QWidget *parent = nullptr);
    explicit DeskWindow(const ado::ConnectionPtr &connection, Patients patients = Patients::AtOnce,
                        QWidget *parent = nullptr);
    /// Once, before it is shown.
    void open(const ado::ConnectionPtr &connection, const Head &head, Patients patients);

    /// Reads the patients anew; the chosen one stays chosen while it is still on the list.
    void refresh();
    /// A sentence at the window's foot; none when empty.
    void setNotice(const QString &notice);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    QWidget *makeHead();
    QWidget *makeFoot();
    void makeTable();
    void connectControls();
    void showReading();
    void showSelected();
    std::optional<Patient> selected() const;
    void openSale();
    void openManagement();
    void openJournal();
    void openChain();
    void openSettings();

    ado::ConnectionPtr connection_;
    std::optional<SaleComponent> component_;
    std::optional<ado::Foresight> coming_; ///< of the patients, until they are read
    PatientModel *model_;
    QLabel *clinicName_;
    controls::SearchBox *search_;
    QTableView *table_;
    QLabel *count_;
    QLabel *chosenName_;
    QLabel *chosenDetail_;
    QLabel *notice_;
    QPushButton *sale_;
    QPushButton *manage_;
    QPushButton *journal_;
    QPushButton *chain_;
    GearButton *settings_;
};

} // namespace desk
