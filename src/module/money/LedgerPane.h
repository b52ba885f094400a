#pragma once

#include "forms/BoundList.h"
#include "forms/PaneContract.h"
#include "money/LedgerInfoPanel.h"
#include "platform/controls/PushCheck.h"
#include "platform/controls/RecordsetGrid.h"
#include "session/SaleSession.h"

#include <QMenu>
#include <QObject>
#include <QWidget>

#include <optional>

/// The ledger of the current order: the list, the strip of buttons above it and the form beside it. The three containers
/// are siblings, so that an edit can leave the form open while list and strip are out of reach; each belongs to the widget
/// it is placed in.
class LedgerPane : public QObject
{
    Q_OBJECT
public:
    LedgerPane(SaleSession &session, PaneShell &shell, QWidget *parent);

    QWidget *c1elaList() const { return c1elaList_; }
    QWidget *elTranMnu() const { return elTranMnu_; }
    QWidget *c1elaTransInfo() const { return c1elaTransInfo_; }
    controls::RecordsetGrid *tdbCustTranManage() const { return tdbCustTranManage_; }

    EditModeTable editMode() const;

    /// A new recordset in the session, bound to the grid; the old one goes.
    void createCustTranManage();
    /// Opens the ledger of the order, none for -1, and rebinds the grid; makes the recordset if it is missing. A failure is
    /// told in its box and leaves the grid empty.
    void loadCustTranManage(qint32 lngCustPK, qint32 lngOrdMPK);
    /// Reads the ledger of the same order anew; its first row becomes current and is shown.
    void requeryCustTranManage();
    /// The orders could not be read: no ledger, and nothing of the last one.
    void clear();
    /// The current ledger row; of no row where there is none, or where another desk deleted it.
    LedgerKey currentRow() const;
    /// Tells beside the window's status what was done to the current order's ledger, and what is to be paid yet.
    void tellDone(const QString &what) const;
    /// Presses "수납", as a double click on a sold line does.
    void pressAutomateReceipt();
    /// The form without a row ("수납관리").
    void resetPane();
    /// The current ledger row and the balance of the current order.
    void showRow();
    /// Saves the form: a new row with mode 0, the current row with mode 1, nothing with any other; then ends the edit. The
    /// button passes the pane's own mode, which is 0 until its first use and -1 from then on.
    void saveTrans(qint16 intTranEditMode);

signals:
    // Buttons whose work needs a dialog or another subsystem.
    void receiptAsked();          ///< "수납"
    void editOfRowAsked();        ///< the current ledger row of the current order is to be changed
    void outstandingMoneyAsked(); ///< "미수금관리"; there is a current order

private:
    void makeGrid();
    void makeStrip();
    void connectControls();
    bool hasOrder() const { return SaleSession::hasCurrent(session_.rsCustSaleMaster); }
    bool hasRow() const { return SaleSession::hasCurrent(session_.rsCustTranManage); }
    ShownOrder currentOrder() const;
    /// Work on the current order begins; false where there is none, or when the window went meanwhile.
    bool takeOrder();
    /// The current row is gone: the ledger is read anew, and none of its rows is current.
    void rowIsGone();
    /// What the customer still owes for the current order; nothing where there is none.
    std::optional<runtime::Currency> balance() const;
    void editRow();
    void deleteRow();
    void saveMemo();
    void cancelEdit();
    void endEdit();

    SaleSession &session_;
    PaneShell &shell_;
    BoundList list_;
    QWidget *c1elaList_;
    QWidget *elTranMnu_;
    LedgerInfoPanel *c1elaTransInfo_;
    controls::RecordsetGrid *tdbCustTranManage_ = nullptr;
    controls::PushCheck *chkCmdAutomateReceipt_ = nullptr;
    controls::PushCheck *chkCmdRunMisuMoneyManger_ = nullptr;
    QList<controls::PushCheck *> chkcmdAddEditDelTran_;
    controls::PushCheck *chkCmdMnuCustTrans_ = nullptr;
    QMenu *PopMnuTran_ = nullptr;
    /// 0 add, 1 edit, -1 neither.
    qint16 intTranEditMode_ = 0;
};
