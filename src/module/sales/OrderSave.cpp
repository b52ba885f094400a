#include "sales/OrderSave.h"

#include "data/Codes.h"
#include "data/HeldOrder.h"
#include "data/WholeWon.h"
#include "platform/ado/Foresight.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Operation.h"
#include "sales/Flow.h"

using runtime::RuntimeError;

namespace {

struct WrittenColumn
{
    const char *name;
    QVariant (*value)(const OrderEdit &edit);
};

QVariant moneyOf(const QString &typed)
{
    return QVariant::fromValue(wholeWon(runtime::CCur(typed)));
}

// In the order in which they are assigned.
constexpr WrittenColumn writtenColumns[] = {
    {"OrdM_Address", [](const OrderEdit &edit) { return QVariant(runtime::Trim(edit.address)); }},
    {"OrdM_Tel", [](const OrderEdit &edit) { return QVariant(runtime::Trim(edit.telephone)); }},
    {"OrdM_Cel", [](const OrderEdit &edit) { return QVariant(runtime::Trim(edit.cell)); }},
    {"OrdM_TakbaeMemo", [](const OrderEdit &edit) { return QVariant(runtime::Trim(edit.takbaeMemo)); }},
    {"OrdM_ETCMemo", [](const OrderEdit &edit) { return QVariant(runtime::Trim(edit.memo)); }},
    {"OrdM_HalinTotal", [](const OrderEdit &edit) { return moneyOf(edit.discountTotal); }},
    {"OrdM_Misugum", [](const OrderEdit &edit) { return moneyOf(edit.outstanding); }},
    {"OrdM_Gubun", [](const OrderEdit &edit) { return QVariant(int(edit.takbae ? sale::Courier : sale::PickUp)); }},
    {"OrdM_Date", [](const OrderEdit &edit) { return QVariant(edit.date); }},
};

} // namespace

OrderSave::OrderSave(SaleSession &session)
    : session_(session)
{
}

OrderKey OrderSave::begin(const OrderEdit &shown)
{
    order_ = OrderOperations(session_).currentOrder();
    order_.date = {}; // an edit of another field does not collide with a new date
    shown_.clear();
    seen_.clear();
    if (!order_)
        return order_.key;
    for (const WrittenColumn &column : writtenColumns) {
        const QString name = QLatin1String(column.name);
        runtime::Attempt convert(
            runtime::Attempt::Failure::IsAnswer); // an amount that cannot be read counts as changed
        convert([&] { shown_[name] = column.value(shown); });
        seen_[name] = session_.rsCustSaleMaster->value(name);
    }
    return order_.key;
}

Outcome OrderSave::save(const OrderEdit &edit)
{
    const runtime::Operation operation("save order", {{"order", order_.number()}});
    refusal_.clear();
    return flow::trapped([&] {
        ado::Recordset &orders = flow::opened(session_.rsCustSaleMaster);
        try {
            const ado::ConnectionPtr connection = flow::masterDB();
            ado::Foresight next(connection);
            next.row(orders, orders.currentRow());
            ado::Transaction transaction(*connection);
            holdOrder(*connection, order_);
            if (!orders.moveToKey(order_.key.bookmark()))
                ado::raiseConflict();
            orders.Resync();
            assign(orders, edit);
            transaction.commitWith(orders);
        } catch (const RuntimeError &error) {
            if (error.number() == runtime::ErrorNumber::TypeMismatch)
                refusal_ = error.description();
            runtime::Attempt undo;
            undo([&] { orders.CancelUpdate(); });
            throw;
        }
        return Outcome::Done;
    });
}

void OrderSave::assign(ado::Recordset &orders, const OrderEdit &edit)
{
    bool collides = false;
    for (const WrittenColumn &column : writtenColumns) {
        const QString name = QLatin1String(column.name);
        const QVariant typed = column.value(edit);
        const bool writtenHere = typed != shown_[name];
        const bool writtenElsewhere = orders[name] != std::exchange(seen_[name], orders[name]);
        if (writtenElsewhere && !writtenHere)
            continue;
        collides |= writtenElsewhere;
        orders.setValue(name, typed);
    }
    if (collides)
        ado::raiseConflict();
}
