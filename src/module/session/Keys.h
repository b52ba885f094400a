#pragma once

#include "platform/runtime/Conversions.h"

#include <QVariant>

#include <compare>

/// Keys as the database gives them, each of a type of its own, so that one is never taken for another. A flow looks its
/// keys up once, before it asks anything, and writes by them: what is current may be another row by then.
template <typename Of>
class Key
{
public:
    Key() = default; ///< of no row
    explicit Key(qint32 number) : number_(number) {}
    /// The key column of a row that was read.
    explicit Key(const QVariant &stored) : number_(runtime::CLng(stored)) {}

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
