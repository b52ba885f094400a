#pragma once

#include "sales/OrderOperations.h"

#include <map>

/// What the order pane holds while an order is in edit.
struct OrderEdit
{
    QString address;
    QString cell;
    QString telephone;
    QString takbaeMemo;
    QString memo;
    QString discountTotal; ///< money text
    QString outstanding;   ///< money text
    bool takbae = false;
    QDate date;
};

/// The edit of one order, from its beginning to its save. It stays with the order that it began with, whatever the list
/// does beneath it. What another desk wrote to a field that was not typed into here stays; where both wrote, the save is a
/// conflict, once: whoever saves again after having been told is the last writer, and wins.
class OrderSave
{
public:
    /// The session outlives it.
    explicit OrderSave(SaleSession &session);

    /// Begins with the current order of rsCustSaleMaster, as the form shows it. Of no row when there is none.
    OrderKey begin(const OrderEdit &shown);
    /// Conflict: another desk wrote to the same field, or deleted the order; nothing was saved.
    Outcome save(const OrderEdit &edit);

private:
    void assign(ado::Recordset &orders, const OrderEdit &edit);

    SaleSession &session_;
    OrderKey order_;
    std::map<QString, QVariant> shown_; ///< what the form would have written when the edit began
    std::map<QString, QVariant> seen_;  ///< the same columns as the row held them then, or when a conflict was told
};
