#pragma once

#include "session/Keys.h"

#include <QDate>

namespace ado {
class Recordset;
}

/// An order as the window last showed it. The key alone does not name it: after a restore it may have come back to another
/// patient's order.
struct ShownOrder
{
    OrderKey key = {};
    CustomerKey customer = {};
    QDate date = {}; ///< no date where it does not matter, as in an edit that may change it

    qint32 number() const { return key.number(); }
    explicit operator bool() const { return bool(key); }
};

/// The current row of a list of orders, as last read.
ShownOrder shownOrder(const ado::Recordset &orders);
