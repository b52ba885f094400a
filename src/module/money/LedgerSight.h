#pragma once

#include "platform/ado/Foresight.h"
#include "platform/runtime/Currency.h"
#include "session/ShownOrder.h"

#include <QString>

#include <functional>
#include <map>
#include <memory>

/// What an order's ledger and outstanding money hold as a dialog opens over them. Whoever writes what the dialog gave asks
/// it first: what another desk has taken since must not be taken once more unseen.
class LedgerSight
{
public:
    /// As stored now.
    static LedgerSight of(ado::Connection &connection, const ShownOrder &order);

    /// What it reads.
    static void tell(ado::Foresight &next, const ShownOrder &order);
    /// What requireUnchanged() reads, told before the order is held.
    ado::Foresight reading(ado::Connection &connection) const;
    /// Within a transaction that holds the order: raises Conflict when another desk wrote since.
    void requireUnchanged(ado::Connection &connection);

    /// Runs `work`, which calls requireUnchanged() before it writes. Where that fails `goOn` is asked with what changed, a
    /// line each, no lock being held: true tries again, with the ledger as it is then. False when nothing was written.
    bool write(const std::function<void()> &work, const std::function<bool(const QString &changes)> &goOn);

private:
    struct Row
    {
        QDate date;
        QString kind;
        QString method;
        qint32 lngMoney = 0;

        QString told() const;
        friend bool operator==(const Row &, const Row &) = default;
    };

    QString changesUpTo(const LedgerSight &now) const;
    bool shows(const LedgerSight &now) const;

    ShownOrder order_;
    std::map<qint32, Row> rows_;
    runtime::Currency outstanding_;
    std::shared_ptr<const LedgerSight> found_; ///< instead, by requireUnchanged()
};
