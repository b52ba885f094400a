#pragma once

#include <QHash>
#include <QList>
#include <QString>

#include <functional>

namespace ado {
class Foresight;
}

/// Names of products by key, as the database holds them; a detail line does not store the name. Each product is asked for
/// once until the names are dropped.
class ProductNames
{
public:
    /// PM_Name; empty when the product is gone. A failed look-up raises RuntimeError and is not remembered.
    QString name(qint32 lngPMPK);
    bool knows(qint32 lngPMPK) const { return names_.contains(lngPMPK); }
    /// Those of different products in one go, where a server or a lock would be waited for by each; elsewhere `keys` are not
    /// asked for.
    void readTogether(const std::function<QList<qint32>()> &keys);
    /// Tells what name() reads of each.
    static void tell(ado::Foresight &next, const QList<qint32> &keys);
    void drop() { names_.clear(); }

private:
    QHash<qint32, QString> names_;
};
