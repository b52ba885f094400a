#pragma once

#include "platform/runtime/Conversions.h"

#include <QVariant>

#include <compare>

/// The key of one table's rows, as a type of its own: the compiler refuses an order's key where a line's is wanted.
/// A flow looks its keys up once, before it asks the user anything: at the answer another row may be current.
template <typename Of>
class Key
{
public:
    Key() = default; ///< no row; tests false
    explicit Key(qint32 number)
        : number_(number)
    {
    }
    /// From the key column of a row.
    explicit Key(const QVariant &stored)
        : number_(runtime::CLng(stored))
    {
    }

    qint32 number() const { return number_; }
    QVariant bookmark() const { return number_; }
    explicit operator bool() const { return number_ > 0; }
    friend auto operator<=>(const Key &, const Key &) = default;

private:
    qint32 number_ = -1;
};

using CustomerKey = Key<struct OfCustomer>;
using OrderKey = Key<struct OfOrder>;
using LineKey = Key<struct OfLine>;
using LedgerKey = Key<struct OfLedgerRow>;
using ProductKey = Key<struct OfProduct>;
using IncomingKey = Key<struct OfIncoming>;
using DealerKey = Key<struct OfDealer>;
