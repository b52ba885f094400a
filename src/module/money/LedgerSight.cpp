#include "money/LedgerSight.h"

#include "data/clsSQL.h"
#include "money/LedgerTexts.h"
#include "platform/ado/Recordset.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Log.h"
#include "platform/runtime/RuntimeError.h"

#include <QStringList>

#include <utility>

using runtime::Currency;

namespace {

QString won(Currency money)
{
    return runtime::Format(QVariant::fromValue(money), QStringLiteral("#,##0")) + QStringLiteral("원");
}

QString ledgerStatement(const ShownOrder &order)
{
    return clsSQL().getCustTranSQL(order.customer.number(), order.number());
}

QString outstandingStatement(const ShownOrder &order)
{
    return QStringLiteral("SELECT OrdM_Misugum FROM tPSOrderMaster WHERE OrdM_PK = ") + QString::number(order.number());
}

QVariant firstValue(ado::Connection &connection, const QString &statement)
{
    ado::Recordset rows;
    rows.Open(statement, connection.shared_from_this(), ado::CursorType::Static, ado::LockType::ReadOnly);
    return rows.hasCurrent() ? rows.valueAt(0, 0) : QVariant();
}

} // namespace

void LedgerSight::tell(ado::Foresight &next, const ShownOrder &order)
{
    next.open(ledgerStatement(order), ado::CursorType::Static)
        .open(outstandingStatement(order), ado::CursorType::Static);
}

ado::Foresight LedgerSight::reading(ado::Connection &connection) const
{
    ado::Foresight next(connection.shared_from_this());
    tell(next, order_);
    return next;
}

LedgerSight LedgerSight::of(ado::Connection &connection, const ShownOrder &order)
{
    LedgerSight sight;
    sight.order_ = order;
    ado::Recordset rows;
    rows.Open(ledgerStatement(order), connection.shared_from_this(), ado::CursorType::Static, ado::LockType::ReadOnly);
    for (; !rows.Eof(); rows.MoveNext()) {
        const QVariant money = rows[QStringLiteral("tpstrans_Money")];
        sight.rows_[runtime::CLng(rows[QStringLiteral("tpstrans_PK")])] = {
            rows[QStringLiteral("tpstrans_Date")].toDate(), ledger::kindText(rows[QStringLiteral("tpstrans_Operator")]),
            ledger::methodText(rows[QStringLiteral("tpstrans_Method")]),
            runtime::isNull(money) ? 0 : runtime::CLng(money)};
    }
    const QVariant outstanding = firstValue(connection, outstandingStatement(order));
    sight.outstanding_ = runtime::isNull(outstanding) ? Currency() : runtime::CCur(outstanding);
    return sight;
}

void LedgerSight::requireUnchanged(ado::Connection &connection)
{
    const LedgerSight now = of(connection, order_);
    if (shows(now))
        return;
    found_ = std::make_shared<const LedgerSight>(now);
    ado::raiseConflict();
}

bool LedgerSight::write(const std::function<void()> &work, const std::function<bool(const QString &)> &goOn)
{
    for (;;) {
        try {
            work();
            return true;
        } catch (const runtime::RuntimeError &) {
            if (!found_)
                throw;
            runtime::trapped();
        }
        const std::shared_ptr<const LedgerSight> found = std::exchange(found_, nullptr);
        if (!goOn(changesUpTo(*found)))
            return false;
        *this = *found;
    }
}

bool LedgerSight::shows(const LedgerSight &now) const
{
    return rows_ == now.rows_ && outstanding_ == now.outstanding_;
}

QString LedgerSight::Row::told() const
{
    QStringList words{runtime::dateText(date), kind, won(Currency::fromWon(lngMoney))};
    if (!method.isEmpty())
        words << u'(' + method + u')';
    return words.join(u' ');
}

QString LedgerSight::changesUpTo(const LedgerSight &now) const
{
    QStringList changes;
    for (const auto &[key, row] : now.rows_) {
        const auto before = rows_.find(key);
        if (before == rows_.end())
            changes << row.told();
        else if (before->second != row)
            changes << before->second.told() + QStringLiteral(" → ") + row.told();
    }
    for (const auto &[key, row] : rows_) {
        if (!now.rows_.contains(key))
            changes << row.told() + QStringLiteral(" → 삭제");
    }
    if (outstanding_ != now.outstanding_)
        changes << QStringLiteral("미수금 ") + won(outstanding_) + QStringLiteral(" → ") + won(now.outstanding_);
    return changes.join(u'\n');
}
