#pragma once

#include "platform/ado/Connection.h"
#include "platform/automation/Automation.h"
#include "session/SaleSession.h"

#include <QDate>
#include <QObject>
#include <QVariant>

class frmMain;

/// The component's face: a host creates it by "prjZelvoProductSale.clsZelvoProductSale" and calls one of the entries
/// with its open connection and one patient. An entry returns at once, always with 0; the window stays open on the
/// host's event loop until the user closes it. While a box or a dialog of the window waits for the user, an entry waits for
/// its end, though it returns at once all the same. Only errors inside the central product server's own calls reach the
/// host.
class clsZelvoProductSale : public QObject
{
    Q_OBJECT
public:
    Q_INVOKABLE explicit clsZelvoProductSale(QObject *parent = nullptr);

    /// Shows the sale window as it stands, without customer or connection. Returns an empty value.
    Q_INVOKABLE QVariant Foo();

    /// `bSex` is true for a male patient. `strVIP` is accepted and not shown.
    Q_INVOKABLE qint16 showProductSale(ado::ConnectionPtr &cnnMasterDB, qint32 lngCustPK, const QString &strName,
                                       const QString &strSN, bool bSex, const QDate &dtBirth, const QString &strZipCode,
                                       const QString &strAddress, const QString &strPhone, const QString &strCell,
                                       const QString &strVIP = QString());
    Q_INVOKABLE qint16 showProductSaleManage(ado::ConnectionPtr &cnnMasterDB, qint32 lngCustPK, const QString &strName,
                                             const QString &strSN, bool bSex, const QDate &dtBirth,
                                             const QString &strZipCode, const QString &strAddress,
                                             const QString &strPhone, const QString &strCell,
                                             const QString &strVIP = QString());

private:
    using FormEntry = qint16 (frmMain::*)(const ado::ConnectionPtr &, const Customer &);
    static qint16 enter(FormEntry entry, const ado::ConnectionPtr &cnnMasterDB, const Customer &customer);
    static void enterNow(FormEntry entry, const ado::ConnectionPtr &cnnMasterDB, const Customer &customer);

    /// Whether the window may open: no central product server is named, or the product list is in step with it.
    static bool settleProductServer(const ado::ConnectionPtr &cnnMasterDB);
    static bool openProductServer(const QString &callSign, automation::ObjectPtr &server);
    static int checkProductServerSync(const QString &callSign);
    static bool resyncFromProductServer(const QString &callSign);
};
