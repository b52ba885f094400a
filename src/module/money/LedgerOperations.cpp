#include "money/LedgerOperations.h"

#include "data/HeldOrder.h"
#include "data/OneStep.h"
#include "data/clsSQL.h"
#include "money/LedgerSight.h"
#include "platform/ado/Transaction.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Operation.h"

#include <optional>

namespace ledger {

void raiseGone(const QString &told)
{
    throw runtime::RuntimeError(runtime::ErrorNumber::Conflict, told);
}

void insertRow(ado::Connection &connection, const Row &row, LedgerSight *seen)
{
    const qint32 customer = row.order.customer.number();
    const runtime::Operation operation("add ledger row", {{"order", row.order.number()}, {"customer", customer}});
    const QString statement = clsSQL().InsertTransactionSQL(customer, row.date, row.intOperator, row.lngMoney,
                                                            row.order.number(), row.strMethod, QString());
    const std::optional<ado::Foresight> next = seen ? std::optional(seen->reading(connection)) : std::nullopt;
    OneStep step(connection);
    holdOrder(connection, row.order);
    if (seen)
        seen->requireUnchanged(connection);
    step.endWith(statement);
}

std::vector<Row> rowsOf(const FirstPayment &payment)
{
    const struct
    {
        float money;
        Operator intOperator;
        QString strMethod;
    } parts[] = {
        {payment.discount, Discount, QString()},
        {payment.cut, Cut, QString()},
        {payment.cash, Payment, CashMethod},
        {payment.card, Payment, CardMethod},
    };
    std::vector<Row> rows;
    for (const auto &part : parts) {
        if (part.money != 0)
            rows.push_back(
                {payment.order, payment.date, part.intOperator, runtime::CLng(double(part.money)), part.strMethod});
    }
    return rows;
}

void appendFirstPayment(ado::Connection &connection, const FirstPayment &payment)
{
    for (const Row &row : rowsOf(payment))
        insertRow(connection, row);
}

ShownRow shownRow(const ado::Recordset &ledger)
{
    ShownRow row{LedgerKey(ledger[QStringLiteral("tpstrans_PK")]), {}};
    for (const QString &field : ledger.fieldNames())
        row.values << ledger[field];
    return row;
}

namespace {

/// Locks the row, so that it stays as it was shown until the transaction ends.
void holdAsShown(ado::Connection &connection, const ShownRow &shown)
{
    if (!connection.holdRow(QStringLiteral("tPSTransaction"), QStringLiteral("tpstrans_PK"), shown.key.number()))
        raiseGone(QStringLiteral("다른 데스크에서 먼저 삭제했습니다. 아무것도 저장하지 않았습니다."));
    ado::Recordset stored;
    stored.Open(QStringLiteral("SELECT * FROM tPSTransaction WHERE tpstrans_PK = ")
                    + QString::number(shown.key.number()),
                connection.shared_from_this(), ado::CursorType::Static, ado::LockType::ReadOnly);
    if (shownRow(stored).values != shown.values)
        raiseGone(QStringLiteral("다른 데스크에서 먼저 수정하거나 삭제했습니다. 아무것도 저장하지 않았습니다."));
}

} // namespace

void updateRow(ado::Connection &connection, const ShownRow &shown, const Row &row)
{
    const LedgerKey key = shown.key;
    const runtime::Operation operation("change ledger row", {{"order", row.order.number()}, {"row", key.number()}});
    const qint32 customer = row.order.customer.number();
    const qint32 order = row.order.number();
    const QString statement =
        row.intOperator == NoOperator
            ? clsSQL::updateButOperatorSQL(customer, row.date, row.lngMoney, order, key.number())
            : clsSQL().UpdateTransactionSQL(customer, row.date, row.intOperator, row.lngMoney, order, key.number());
    ado::Transaction transaction(connection); // ends at once: nothing may stay locked while the user reads of an error
    holdOrder(connection, row.order);
    holdAsShown(connection, shown);
    connection.Execute(statement);
    transaction.commit();
}

void standOnOrder(ado::Recordset &rsCustSaleMaster, const ShownOrder &order)
{
    if (!rsCustSaleMaster.moveToKey(order.key.bookmark()))
        raiseGone(QStringLiteral("다른 데스크에서 먼저 삭제한 거래입니다."));
    rsCustSaleMaster.Resync();
    if (shownOrder(rsCustSaleMaster).customer != order.customer)
        ado::raiseConflict();
}

void storeOutstanding(ado::Recordset &rsCustSaleMaster, runtime::Currency money)
{
    try {
        rsCustSaleMaster.setValue(QStringLiteral("OrdM_Misugum"), QVariant::fromValue(money));
        rsCustSaleMaster.Update();
    } catch (const runtime::RuntimeError &) {
        // What was not saved must not ride along with a later save of the row.
        runtime::Attempt undo;
        undo([&] { rsCustSaleMaster.CancelUpdate(); });
        undo([&] { rsCustSaleMaster.Resync(); }); // a server that is lost may have saved before it went
        throw;
    }
}

void addOutstanding(ado::Connection &connection, ado::Recordset &rsCustSaleMaster, const ShownOrder &order,
                    runtime::Currency money, LedgerSight *seen)
{
    const runtime::Operation operation("change outstanding money", {{"order", order.number()}});
    const std::optional<ado::Foresight> next = seen ? std::optional(seen->reading(connection)) : std::nullopt;
    onHeldOrder(connection, order, [&] {
        if (seen)
            seen->requireUnchanged(connection);
        standOnOrder(rsCustSaleMaster, order);
        const QVariant stored = rsCustSaleMaster[QStringLiteral("OrdM_Misugum")];
        const runtime::Currency before = runtime::isNull(stored) ? runtime::Currency() : runtime::CCur(stored);
        storeOutstanding(rsCustSaleMaster, before + money);
    });
    rsCustSaleMaster.Resync();
}

} // namespace ledger
