#pragma once

#include <QAnyStringView>
#include <QString>

namespace statistics {

/// The codes of the money ledger. The components are installed apart from the module and know nothing of its rooms.
enum Operator : int { Cut = 1, Discount = 2, Payment = 3, Refund = 4 };

enum class Medium { Cash, Card, Bank };

/// The last character of the method tells the medium: "1" card, "2" bank, anything else, nothing included, cash.
Medium mediumOf(QAnyStringView method);
/// Whether the method says that the money was taken against outstanding money: the first character is "1".
bool isAgainstOutstanding(QAnyStringView method);
/// "tPSTransaction LEFT JOIN tPSOrderMaster ...": the ledger with the order of each row, if it has one. The ledger holds
/// keys of the desk's receipts too, so the customer has to be the order's.
QString ledgerWithOrders();
/// An expression over ledgerWithOrders(), 1 for a row that is dated after its order's day.
QString afterItsDay();
/// Whether a payment is money received later: by its day, whatever its method says, or by its method.
bool isReceivedLater(QAnyStringView method, bool afterItsDay);

} // namespace statistics
