#pragma once

#include "platform/ado/Recordset.h"
#include "session/Keys.h"

#include <QDate>
#include <QObject>
#include <QString>

#include <functional>
#include <memory>

/// The customer whose sale is on show, as the host gave it.
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

    /// The server was lost in the middle of a change, and orders and lines could not be read since: what is shown may lack
    /// what was saved.
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

    /// Runs a flow's work. After a conflict the lists are read anew, so that the next try works; the error goes on.
    void readAnewOnConflict(const std::function<void()> &work);

signals:
    // What one pane tells another; the receiver loads or shows.
    void orderTotalsChanged(); ///< the current order's sums were read anew
    /// Another desk was quicker: the orders and the lines of the current one are to be read anew.
    void changedElsewhere();
};
