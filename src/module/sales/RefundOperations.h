#pragma once

#include "sales/OrderOperations.h"
#include "sales/ProductNames.h"

/// A sold line as its return begins from it.
struct SoldLine
{
    CustomerKey customer;
    LineKey line;
    ProductKey product;
    QString name; ///< empty when the product is gone
    runtime::Currency unitPrice;
    runtime::Currency unitDiscount;
    qint16 count = 0;
    QDate date; ///< of its order
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

    /// Writes the note to the sold line, then the row. Conflict: another desk changed or deleted the line or the order of
    /// the row; Failed: something else went wrong. A note that was written stays when the row fails.
    Outcome takeBack(const SoldLine &sold, const Refund &refund);

private:
    void noteOnLine(LineKey line, const Refund &refund);
    Outcome addRow(const SoldLine &sold, const Refund &refund);

    SaleSession &session_;
    OrderOperations orders_;
};
