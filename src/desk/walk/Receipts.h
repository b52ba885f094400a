#pragma once

#include "desk/walk/Actor.h"

namespace walk {

/// Prints the roll receipt of the current order into a file of the folder, as NAME.pdf. Raises Astray where it is missing.
void printRoll(Actor &actor, QWidget *saleWindow, const QString &name);

/// Opens a preview by its button and saves it as NAME.pdf in the folder. Raises Astray where it is missing.
void savePreview(Actor &actor, QWidget *window, const QString &button, const QString &name);

/// Prints the three receipts of the current order by their buttons: both previews saved as receipt.pdf and period.pdf, the
/// roll as roll.pdf. Raises Astray where one is missing.
void printReceipts(Actor &actor, QWidget *saleWindow);

} // namespace walk
