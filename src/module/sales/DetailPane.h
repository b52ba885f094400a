#pragma once

#include "forms/BoundList.h"
#include "forms/MemoBox.h"
#include "forms/PaneContract.h"
#include "platform/controls/PushCheck.h"
#include "platform/controls/RecordsetGrid.h"
#include "sales/OrderOperations.h"
#include "sales/ProductNames.h"
#include "session/SaleSession.h"

#include <QMetaObject>
#include <QObject>
#include <QWidget>

/// The lines of the current order with their two commands, and the return memo of the current line. The two containers
/// belong to the widgets they are placed in.
class DetailPane : public QObject
{
    Q_OBJECT
public:
    DetailPane(SaleSession &session, QWidget *parent);

    QWidget *c1elaList() const { return c1elaList_; }
    QWidget *c1elaSaleDetailMemo() const { return c1elaSaleDetailMemo_; }
    controls::RecordsetGrid *tdbCustSaleDetails() const { return tdbCustSaleDetails_; }
    controls::PushCheck *chkCmdRefund() const { return chkCmdRefund_; }
    /// Controls that take the paint sets; the pane has no edit of its own.
    EditModeTable colors() const;

    /// A new recordset in the session, bound to the grid; the old one and its clone go.
    void createCustSaleDetails();
    /// Opens the lines of the order, none for -1, rebinds the grid and renews rsCustSaleDetailsClone; makes the recordset
    /// if it is missing. A failure is told in its box and leaves the grid empty.
    void loadCustSaleDetails(qint32 lngOrdMPK);
    /// The orders could not be read: no lines, and nothing of the last one.
    void clear();
    /// The current line; of no row where there is none.
    LineKey currentLine() const;
    /// Makes the line current; without it none is.
    void choose(LineKey line);
    /// Coming back from the management tab: product names may have changed.
    void rebind();
    /// Tells the names of the lines in sight, all of them; and reads those that are not known, which a grid else does when it is
    /// painted.
    void tellNamesInSight(ado::Foresight &next) const;
    void readNamesInSight();
    /// Shows the return memo of the current line, none without one.
    void showRefundMemo();

signals:
    /// A sold line was double-clicked: the receipt of its order is asked for.
    void receiptAsked();
    /// The current line, which can be returned, is to be returned.
    void refundAsked();

private:
    void placeControls();
    void renewClone();
    QList<qint32> productsFrom(int line) const;
    int firstInSight() const;
    QString productName(const ado::Bookmark &row);
    void rowChanged();
    void doubleClicked();
    void askRefund();
    void deleteDetail();

    SaleSession &session_;
    OrderOperations operations_;
    ProductNames names_;
    BoundList list_;
    QMetaObject::Connection rowsReset_;
    QWidget *c1elaList_;
    QWidget *c1elaSaleDetailMemo_;
    controls::RecordsetGrid *tdbCustSaleDetails_;
    controls::PushCheck *chkCmdRefund_;
    controls::PushCheck *chkCmdDelOrderDetail_;
    MemoBox *txtCustOrderRfndMemo_;
};
