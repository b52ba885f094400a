#pragma once

#include <QHash>
#include <QString>

/// Names of products by key, as the database holds them; a detail line does not store the name. Each product is asked for
/// once until the names are dropped.
class ProductNames
{
public:
    /// PM_Name; empty when the product is gone. A failed look-up raises RuntimeError and is not remembered.
    QString name(qint32 lngPMPK);
    void drop() { names_.clear(); }

private:
    QHash<qint32, QString> names_;
};
