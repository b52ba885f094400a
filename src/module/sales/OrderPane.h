#pragma once

#include "forms/BoundList.h"
#include "forms/PaneContract.h"
#include "platform/controls/RecordsetGrid.h"
#include "sales/OrderInfoPanel.h"
#include "sales/OrderOperations.h"
#include "sales/OrderSave.h"
#include "sales/OrderStrip.h"
#include "session/SaleSession.h"

#include <QObject>
#include <QWidget>

/// The customer's orders: the list, the strip of buttons above it and the form beside it. The three containers are
/// siblings, so that an edit can leave the form open while list and strip are out of reach; each belongs to the widget it
/// is placed in.
class OrderPane : public QObject
{
    Q_OBJECT
public:
    OrderPane(SaleSession &session, PaneShell &shell, QWidget *parent);

    QWidget *c1elaList() const { return c1elaList_; }
    QWidget *elTranMnu() const { return elTranMnu_; }
    QWidget *c1elaCustSaleInfo() const { return c1elaCustSaleInfo_; }
    controls::RecordsetGrid *tdbCustSaleMaster() const { return tdbCustSaleMaster_; }
    OrderStrip *strip() const { return elTranMnu_; }

    EditModeTable editMode() const;

    /// A new recordset in the session, bound to the grid; the old one goes.
    void createCustSaleMaster();
    /// Opens the orders of the session's customer anew and rebinds the grid; a failure is told in its box and leaves the
    /// list and all that depends on it empty.
    void loadCustSaleMaster();
    /// Reads the same orders anew. The current one stays current; without it there is none.
    void readAnew();
    /// The current order as the list opens with it: it bears no mark until it is chosen.
    void leaveUnchosen();
    /// As a click on the current order does, where nobody has chosen it.
    void chooseOrder();
    /// The sums of the current order, as read last.
    void showOrderTotals();
    /// Empties the form's text boxes ("고객").
    void resetPane();
    /// Leaves an edit under way without saving, before another customer's orders come. Whether there was one.
    bool abandonEdit();
    /// 1 while the form is open for editing, otherwise -1.
    qint16 intOrderEditState() const { return inEdit() ? 1 : -1; }

signals:
    /// The current order is another one, or was read anew.
    void orderRowChanged(int lngOrdMPK);
    /// There is no current order.
    void noOrderSelected();
    /// The list was read anew, or money of one of its orders.
    void ordersChanged();
    /// The orders could not be read: nothing may stay on view that belongs to one.
    void ordersNotRead();
    // The receipts of the current order, and of the customer's orders in a period; there is a current order.
    void orderReceiptAsked();
    void periodReceiptAsked(const QDate &dtStart, const QDate &dtEnd);
    void rollReceiptAsked();

private:
    void connectButtons();
    void rowChanged();
    void orderIsGone();
    /// Work on the current order begins; false when the window went meanwhile.
    bool takeOrder();
    void editOrder();
    void saveOrder();
    void endEdit();
    void leaveEdit();
    void deleteOrder();
    void saveOutstanding();
    bool hasOrderToPrint();
    bool inEdit() const { return shell_.isInEdit(editCode::Order); }
    void askPeriodReceipt();

    SaleSession &session_;
    PaneShell &shell_;
    OrderOperations operations_;
    OrderSave save_;
    BoundList list_;
    QWidget *c1elaList_;
    OrderStrip *elTranMnu_;
    OrderInfoPanel *c1elaCustSaleInfo_;
    controls::RecordsetGrid *tdbCustSaleMaster_;
};
