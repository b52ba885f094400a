#pragma once

#include "platform/ado/TableRegistry.h"

#include <QStringList>

#include <functional>
#include <vector>

namespace central {

/// How far somebody has read the chain's list; the list's name is empty before the first reading.
struct ListMark
{
    QString list;
    qint64 revision = 0;

    friend bool operator==(const ListMark &, const ListMark &) = default;
};

/// What the head office decides of a product, in the order of clinic::chainColumns(): each value as a text that is the same
/// on every engine, null for none.
using Product = QStringList;

QString sameOnEveryEngine(const QString &text, ado::ColumnType holds);
/// Of the columns behind `first` in a row of a result.
Product productIn(const QStringList &row, qsizetype first);
/// The place of a column in a product.
qsizetype placeOf(const char *column);

struct Offered
{
    qint32 key; ///< the head office's
    bool gone;  ///< deleted there
    Product product;
};

/// What the head office has to tell whoever has read as far as a mark.
struct Offer
{
    ListMark mark;
    bool whole = false; ///< all products; otherwise those that changed since
    std::vector<Offered> products;
};

/// Counts what came from the head office, while no transaction is open, and then, of a total, what is saved within one.
using Progress = std::function<void(qint64 done, qint64 total)>;

} // namespace central
