#pragma once

#include "platform/ado/Connection.h"

#include <QObject>
#include <QString>

/// Sums of an order and the counts that protect products in use. No state, nothing is shown or raised.
class clsFunctions : public QObject
{
    Q_OBJECT
public:
    Q_INVOKABLE explicit clsFunctions(QObject *parent = nullptr);

    /// Sums the order's lines anew and writes its four totals; outstanding money stays. Returns 1, or 0 when it failed
    /// and the totals stand as they were.
    Q_INVOKABLE qint16 reCalculateOMTotal(ado::ConnectionPtr &cnnMasterDB, qint32 lngOrdMPK);
    /// Products of that name, at most 32,767; 0 also when counting failed.
    Q_INVOKABLE qint16 countSameExistProductName(ado::ConnectionPtr &cnnMasterDB, const QString &strPMName);
    /// Lines that sell the product, at most 32,767; 0 for a product that is not handled, and when counting failed.
    Q_INVOKABLE qint16 CountNoOfProductUsed(ado::ConnectionPtr &conMasterDB, qint32 lngPMPK);
};
