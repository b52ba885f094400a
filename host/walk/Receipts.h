#pragma once

#include "host/walk/Actor.h"

namespace walk {

/// Makes this station's roll printer a file of the folder. To be called before the sale window prints.
void printRollToFile(const QString &folder);

/// Prints the three receipts of the current order by their buttons: both previews saved as receipt.pdf and period.pdf, the
/// roll as roll.pdf. Raises Astray where one is missing.
void printReceipts(Actor &actor, QWidget *saleWindow);

} // namespace walk
