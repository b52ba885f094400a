#include "products/IncomingOperations.h"

#include "data/HeldOrder.h"
#include "data/clsSQL.h"
#include "forms/clsNumberRelated.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Operation.h"
#include "products/GoneRow.h"
#include "session/modGlobalVars.h"

#include <cmath>

namespace {

constexpr int mostDigits = 9;

SaveOutcome outcomeOfCheck(const IncomingEdit &edit)
{
    if (runtime::Trim(edit.companyTag).isEmpty())
        return SaveOutcome::Refused;
    return isCountTooLong(edit.count) ? SaveOutcome::TooMuch : SaveOutcome::Saved;
}

/// The dealer of the edit. Another desk may have deleted it since it was chosen, and must not while the purchase is saved.
DealerKey holdDealer(const IncomingEdit &edit)
{
    const DealerKey dealer(QVariant(runtime::Val(runtime::Trim(edit.companyTag))));
    if (!dealerIsHeld(*gcnnMasterDB, dealer))
        ado::raiseConflict();
    return dealer;
}

} // namespace

IncomingOperations::IncomingOperations(SaleSession &session)
    : session_(session)
{
}

SaveOutcome IncomingOperations::add(ProductKey product, const IncomingEdit &edit)
{
    const runtime::Operation operation("add purchase", {{"product", product.number()}});
    const SaveOutcome outcome = outcomeOfCheck(edit);
    if (outcome != SaveOutcome::Saved)
        return outcome;
    // No guard: the end of the event rolls back what an error leaves open. The edit stays open as well, and its next save
    // may go over it.
    gcnnMasterDB->BeginTrans();
    // Another desk may have deleted the product: the purchase would be stored where no list shows it.
    if (!productIsHeld(*gcnnMasterDB, product))
        ado::raiseConflict();
    const DealerKey dealer = holdDealer(edit);
    session_.rsProductIncoming->AddNew();
    save(product.number(), dealer, edit);
    return outcome;
}

SaveOutcome IncomingOperations::change(IncomingKey purchase, const IncomingEdit &edit)
{
    const runtime::Operation operation("save purchase", {{"purchase", purchase.number()}});
    const SaveOutcome outcome = outcomeOfCheck(edit);
    if (outcome != SaveOutcome::Saved)
        return outcome;
    find(purchase);
    gcnnMasterDB->BeginTrans();
    save(session_.rsProductIncoming->value(QStringLiteral("PM_PK")), holdDealer(edit), edit);
    return outcome;
}

void IncomingOperations::remove(IncomingKey purchase)
{
    const runtime::Operation operation("delete purchase", {{"purchase", purchase.number()}});
    find(purchase);
    session_.rsProductIncoming->Delete();
}

void IncomingOperations::find(IncomingKey purchase)
{
    if (!session_.rsProductIncoming->moveToKey(purchase.bookmark()))
        ado::raiseConflict();
}

void IncomingOperations::save(const QVariant &product, DealerKey dealer, const IncomingEdit &edit)
{
    const auto pure = [](const QString &typed) { return clsNumberRelated().GetPureNumber(runtime::Trim(typed)); };
    ado::Recordset &incoming = *session_.rsProductIncoming;
    incoming.setValue(QStringLiteral("PM_PK"), product);
    incoming.setValue(QStringLiteral("CM_PK"), dealer.number());
    incoming.setValue(QStringLiteral("IN_Count"), runtime::Val(edit.count));
    incoming.setValue(QStringLiteral("IN_UnitPrice"), pure(edit.unitPrice));
    incoming.setValue(QStringLiteral("IN_HalinTotal"), pure(edit.halinTotal));
    incoming.setValue(QStringLiteral("IN_Total"), pure(edit.total));
    incoming.setValue(QStringLiteral("IN_EtcMemo"), edit.memo);
    incoming.setValue(QStringLiteral("IN_Date"), edit.date);
    incoming.Update();
    gcnnMasterDB->CommitTrans();
}

bool isCountTooLong(const QString &typed)
{
    int digits = 0;
    for (const QChar character : typed) {
        if (character.isDigit())
            ++digits;
        else if (!character.isSpace() && (digits > 0 || (character != u'-' && character != u'+')))
            break;
    }
    // An exponent makes a long number of few digits.
    return digits > mostDigits || std::abs(runtime::Val(typed)) >= std::pow(10.0, mostDigits);
}

QString getCompanyName(DealerKey dealer)
{
    ado::Recordset name;
    name.Open(clsSQL().getCmpnyNameSQL(dealer.number()), gcnnMasterDB, ado::CursorType::Static,
              ado::LockType::ReadOnly);
    return name.hasCurrent() ? runtime::text(name[QStringLiteral("CM_Name")]) : QString();
}
