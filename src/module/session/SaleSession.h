#pragma once

#include "platform/ado/Recordset.h"
#include "session/Keys.h"

#include <QDate>
#include <QObject>
#include <QString>

#include <functional>
#include <memory>

/// The customer whose sale the window shows, as the host gave it.
struct Customer
{
    qint32 lngCustPK = -1;
    QString name;
    QString chartNumber;
    bool male = false;
    QDate birth;
    QString zipCode;
    QString address;
    QString phone;
    QString cell;
    QString vip;

    CustomerKey key() const { return CustomerKey(lngCustPK); }
};

/// One session of the sale window: the customer and the recordsets that the panes share. The main window owns it and
/// hands it to its panes. A recordset is null until its loader made it; all are closed and released at unload.
class SaleSession : public QObject
{
    Q_OBJECT
public:
    using RecordsetPtr = std::unique_ptr<ado::Recordset>;

    Customer customer;

    /// Set when the server was lost during a change and the lists could not be read since: a line that was saved may be
    /// missing from the screen, and the user would add it again.
    bool linesMayBeStale = false;

    RecordsetPtr rsSaleProductLists;
    RecordsetPtr rsCustSaleMaster;
    RecordsetPtr rsCustSaleDetails;
    RecordsetPtr rsCustSaleDetailsClone;
    RecordsetPtr rsCustTranManage;
    RecordsetPtr rsSaleProductListsManager;
    RecordsetPtr rsProductIncoming;
    RecordsetPtr rsCompanyMaster;

    /// Closes and releases every recordset; the connection stays the host's.
    void release();

    /// Whether the recordset exists, is open and has a current row.
    static bool hasCurrent(const RecordsetPtr &recordset) { return recordset && recordset->hasCurrent(); }

    /// Runs `work`. On a conflict the lists are read again, so that the next try can succeed; the error is rethrown.
    void readAnewOnConflict(const std::function<void()> &work);

signals:
    // From one pane to another, since panes do not know each other.
    void orderTotalsChanged(); ///< the current order's sums were read anew
    /// Work begins on the current order: where nobody has chosen it yet it is chosen now, so that its lines and its ledger
    /// are on view. May open a box, under which the window may go.
    void orderTaken();
    void done(const QString &what); ///< told beside the window's status, in a few words
    /// Another desk wrote first: the orders and the lines of the current order must be read again.
    void changedElsewhere();
    /// Another desk deleted the product that was to be sold: the list of products must be read again.
    void productGone();
};
