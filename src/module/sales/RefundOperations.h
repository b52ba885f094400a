#pragma once

#include "data/OneStep.h"
#include "sales/OrderOperations.h"
#include "sales/ProductNames.h"

/// A sold line as its return begins from it.
struct SoldLine
{
    ShownOrder order;
    LineKey line;
    ProductKey product;
    QString name; ///< empty when the product is gone
    runtime::Currency unitPrice;
    runtime::Currency unitDiscount;
    qint16 count = 0;
};

/// What is taken back of it.
struct Refund
{
    qint16 count = 0; ///< negative
    QDate date;
    QString memo;
    runtime::Currency unitPrice; ///< paid back for each
};

/// Takes a sold line back, without a screen: a note on the line, and a row of its own with a negative quantity on an order
/// of the sale's date or of the return's. The quantity of the sold line stays, so it can be taken back in parts. Money paid
/// back is not recorded here.
class RefundOperations
{
public:
    /// The session outlives the operations.
    explicit RefundOperations(SaleSession &session);

    /// The current line of the current order. Raises RuntimeError when one of them cannot be read.
    SoldLine currentLine() const;

    /// Why a line cannot be taken back at all, or this refund not be recorded, for the user to read; empty when it can.
    static QString refusal(const SoldLine &sold);
    static QString refusal(const Refund &refund);

    /// Writes the note to the sold line, then the row; nothing where one of the two is refused. Conflict: another desk changed or deleted the line or the order of
    /// the row; Failed: something else went wrong. A note that was written stays when the row fails.
    Outcome takeBack(const SoldLine &sold, const Refund &refund);

private:
    bool noteOnLine(const SoldLine &sold, const Refund &refund);
    void writeNote(OneStep &step, LineKey line, const Refund &refund);
    Outcome addRow(const SoldLine &sold, const Refund &refund, std::optional<ado::Foresight> found);

    SaleSession &session_;
    OrderOperations orders_;
};
