#pragma once

#include <QString>

namespace statistics {

/// The codes of the money ledger.
enum Operator : int { Cut = 1, Discount = 2, Payment = 3, Refund = 4 };

enum class Medium { Cash, Card, Bank };

/// The last character of the method tells the medium: "1" card, "2" bank, anything else, nothing included, cash.
Medium mediumOf(const QString &method);
/// Whether the money was taken against outstanding money: the first character is "1".
bool isAgainstOutstanding(const QString &method);

} // namespace statistics
