#pragma once

#include "entry/EditModes.h"
#include "forms/PaneContract.h"
#include "platform/controls/RecordsetGrid.h"
#include "platform/controls/TabWidget.h"
#include "session/SaleSession.h"

#include <QMainWindow>

#include <functional>
#include <initializer_list>
#include <memory>

namespace ado {
class Foresight;
}

class CustomerPane;
class DealerPane;
class DetailPane;
class IncomingPane;
class LedgerPane;
class OrderPane;
class ProductPane;
class PropertiesPane;
class ReceiptFlow;
class RefundFlow;
class SaleEntryPane;
class SaleListPane;
class SaleTab;
class StatisticsPane;
class StatusLine;

/// The one window of a session: tabs, status bar and the edit modes; the work is the panes'. Created on first use,
/// reused by later entries while it is open, deleted when the user closes it. The connection stays the host's.
class frmMain : public QMainWindow, public PaneShell
{
    Q_OBJECT
public:
    /// The default instance, loaded if it does not exist. Loading touches no table. `one` becomes it where there is none.
    static frmMain &instance(std::unique_ptr<frmMain> one = {});
    /// One that nobody sees yet, and that is nobody's instance.
    static std::unique_ptr<frmMain> made();
    /// The default instance if it exists.
    static frmMain *existing();

    ~frmMain() override;

    /// Whether a flow of the window is under way, perhaps in a box or a dialog that waits for the user.
    static bool isAtWork();

    /// Both return 0 always; errors end here.
    qint16 showProductSaleForm(const ado::ConnectionPtr &cnnMasterDB, const Customer &customer);
    qint16 showProductSaleManageForm(const ado::ConnectionPtr &cnnMasterDB, const Customer &customer);

    /// Tells what either reads of the customer first.
    static void tellSale(ado::Foresight &next, qint32 lngCustPK);

    void enterEditMode(const QString &code) override;
    void leaveEditMode(const QString &code) override;
    bool isInEdit(const QString &code) const override { return editModes_.isInEdit(code); }
    void paintEntryColors() override;

protected:
    bool event(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    enum Tab { SaleTabIndex, ManageTabIndex, StatisticsTabIndex, PropertiesTabIndex };

    frmMain();
    void createPanes();
    void placePanes();
    void connectPanes();
    void focusSearch();
    void printRollReceipt();
    void fillEditModes();
    /// The load handler.
    void load();
    void lockAllPanes();
    void centerFormOnScreen();
    QList<controls::RecordsetGrid *> layoutGrids() const;

    void beginSession(const ado::ConnectionPtr &cnnMasterDB, const Customer &customer);
    /// Drops open edits without saving; the user is told once the entry has ended.
    void abandonEdits();
    void tellAbandonedEdit(const QString &code, const QString &customer);
    /// Reads orders, lines and ledger again after a conflict; each stays on its row if that still exists.
    void readAnew();
    void watchForRestore();
    void readAllAnew();
    void closeNow();
    static void whenFree(std::function<void()> work);
    /// Each may open a box, under which the window may go; then those that follow are left out, and it is false.
    bool stepByStep(std::initializer_list<std::function<void()>> steps);
    void openSaleRecordsets();
    static void tellSaleLists(ado::Foresight &next, qint32 lngCustPK);
    void sendFirstOrder() const;
    void tellLinesAndLedger(ado::Foresight &next, qint32 lngCustPK, qint32 lngOrdMPK) const;
    void showLinesAndLedger(qint32 lngOrdMPK);
    void showNoOrder();
    void bringUp();
    void showStatus();
    void tabChanged(int newTab);
    bool showProductsAnew();
    void visitManagement();
    void forgetManagement();
    /// Saves the layout and closes the recordsets, once.
    void unload();

    SaleSession session_;
    EditModes editModes_;
    controls::TabWidget *c1tabMain_ = nullptr;
    StatusLine *statusLine_ = nullptr;
    int currentTab_ = SaleTabIndex;
    bool opensSale_ = false;       ///< its lists come, and no order is to be shown
    bool saleListIsStale_ = false; ///< the management tab was visited since the sale list was read
    bool unloaded_ = true;         ///< or not loaded yet
    bool closesNow_ = false;
    bool closingWaits_ = false;

    CustomerPane *customerPane_ = nullptr;
    SaleListPane *saleListPane_ = nullptr;
    SaleEntryPane *entryPane_ = nullptr;
    OrderPane *orderPane_ = nullptr;
    DetailPane *detailPane_ = nullptr;
    RefundFlow *refundFlow_ = nullptr;
    LedgerPane *ledgerPane_ = nullptr;
    ReceiptFlow *receiptFlow_ = nullptr;
    ProductPane *productPane_ = nullptr;
    IncomingPane *incomingPane_ = nullptr;
    DealerPane *dealerPane_ = nullptr;
    StatisticsPane *statisticsPane_ = nullptr;
    PropertiesPane *propertiesPane_ = nullptr;
    SaleTab *saleTab_ = nullptr;
};
