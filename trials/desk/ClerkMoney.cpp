#include "trials/desk/Clerk.h"

#include "data/clsSQL.h"
#include "money/LedgerEntry.h"
#include "money/OutstandingMoney.h"
#include "money/clsOperationMoney.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/RuntimeError.h"
#include "session/modGlobalVars.h"

namespace trial {

/// As the button "수납" does: the first payment, or one more operation.
void Clerk::takeMoney()
{
    clsOperationMoney ledgerOf;
    ledgerOf.OPM_SetConnection(gcnnMasterDB);
    if (ledgerOf.OPM_ExistOperationByReceipt(order_) == 0)
        payFirst();
    else
        payFurther();
}

void Clerk::payFirst()
{
    Numbers numbers{{"order", order_}};
    ledger::FirstPayment payment;
    payment.order = shown();
    payment.date = day();
    // In the order in which the operation writes them.
    const std::pair<const char *, float *> parts[] = {
        {"part1", &payment.discount}, {"part2", &payment.cut}, {"part3", &payment.cash}, {"part4", &payment.card}};
    for (const auto &[name, money] : parts) {
        if (money == &payment.cash || roll(2) == 0) {
            numbers[name] = next();
            *money = float(numbers[name]);
        }
    }
    const bool paid = perform("pay", numbers, [&] {
        ledger::appendFirstPayment(*gcnnMasterDB, payment);
        return Outcome::Done;
    });
    if (paid && roll(2))
        owe((1 + roll(50)) * 100);
}

void Clerk::payFurther()
{
    const qint64 token = next();
    const auto kind = qint16(1 + roll(4));
    const bool paid = perform("pay-more", {{"token", token}, {"order", order_}}, [&] {
        ledger::insertRow(*gcnnMasterDB, {shown(), day(), kind, qint32(token), ledger::CardMethod});
        return Outcome::Done;
    });
    if (paid && roll(2))
        owe(-token);
}

void Clerk::owe(qint64 won)
{
    perform("owe", {{"owed", won}, {"order", order_}}, [&] {
        ledger::addOutstanding(*gcnnMasterDB, *session_.rsCustSaleMaster, shown(), runtime::Currency::fromWon(won));
        return Outcome::Done;
    });
}

void Clerk::collect()
{
    const qint64 token = next();
    perform("collect", {{"token", token}, {"owed", -token}, {"order", order_}}, [&] {
        outstanding::pay(*gcnnMasterDB, {shown(), day(), ledger::Payment, qint32(token), QStringLiteral("10")});
        return Outcome::Done;
    });
}

void Clerk::addEntry()
{
    const qint64 token = next();
    const auto any = [](const ado::Recordset &) { return true; };
    standOn(session_.rsCustTranManage, clsSQL().getCustTranSQL(session_.customer.lngCustPK, order_), any);
    LedgerEntry entry;
    entry.date = day();
    entry.intOperator = ledger::Payment;
    entry.money = runtime::Currency::fromWon(token);
    perform("entry", {{"token", token}, {"order", order_}},
            [&] { return ledger::addFormEntry(session_, shown(), entry) ? Outcome::Done : Outcome::Failed; });
}

void Clerk::changeEntry()
{
    const auto any = [](const ado::Recordset &row) { return !runtime::isNull(row[QStringLiteral("tpstrans_Money")]); };
    if (!standOn(session_.rsCustTranManage, clsSQL().getCustTranSQL(session_.customer.lngCustPK, order_), any))
        return;
    const ledger::ShownRow row = ledger::shownRow(*session_.rsCustTranManage);
    const QVariant money = session_.rsCustTranManage->value(QStringLiteral("tpstrans_Money"));
    const qint64 token = next();
    perform("change-entry", {{"token", token}, {"gone", runtime::CLng(money)}, {"order", order_}}, [&] {
        ledger::updateRow(*gcnnMasterDB, row, {shown(), day(), ledger::Payment, qint32(token), QString()});
        return Outcome::Done;
    });
}

void Clerk::deleteEntry()
{
    const auto any = [](const ado::Recordset &row) { return !runtime::isNull(row[QStringLiteral("tpstrans_Money")]); };
    if (!standOn(session_.rsCustTranManage, clsSQL().getCustTranSQL(session_.customer.lngCustPK, order_), any))
        return;
    const QVariant token = session_.rsCustTranManage->value(QStringLiteral("tpstrans_Money"));
    perform("delete-entry", {{"gone", runtime::CLng(token)}, {"order", order_}}, [&] {
        session_.rsCustTranManage->Delete();
        return Outcome::Done;
    });
}

} // namespace trial
