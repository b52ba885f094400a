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

/// One order's edit, from opening the form to saving it. It belongs to the order that it began with, even if the list
/// moves on. What another desk wrote meanwhile to a field that the user left alone stays. Where both wrote, the first
/// save is a conflict; saving again after that overwrites.
class OrderSave
{
public:
    /// The session outlives it.
    explicit OrderSave(SaleSession &session);

    /// Begins with the current order of rsCustSaleMaster, `shown` being its form. No key when there is none.
    OrderKey begin(const OrderEdit &shown);
    /// Conflict: another desk wrote to the same field, or deleted the order; nothing was saved.
    Outcome save(const OrderEdit &edit);
    /// What was typed that the last save could not take; empty where that was not why it failed.
    const QString &refusal() const { return refusal_; }

private:
    void assign(ado::Recordset &orders, const OrderEdit &edit);

    SaleSession &session_;
    ShownOrder order_;
    QString refusal_;
    std::map<QString, QVariant> shown_; ///< what the form would have written when the edit began
    std::map<QString, QVariant> seen_;  ///< the same columns as stored then, or at the last conflict
};
