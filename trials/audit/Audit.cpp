#include "trials/audit/Audit.h"

#include "trials/audit/Stand.h"

#include <algorithm>
#include <set>

namespace trial {

namespace {

bool writesLines(const Deed &deed)
{
    return deed.kind == "sell" || deed.kind == "sell-new" || deed.kind == "return" || deed.kind == "delete-line";
}

/// The tokens of the rows that an operation adds, in the order in which it writes them.
std::vector<qint64> added(const Deed &deed)
{
    std::vector<qint64> tokens;
    if (deed.kind != "edit") {
        for (const char *name : {"token", "part1", "part2", "part3", "part4"})
            if (const qint64 token = deed.number(name))
                tokens.push_back(token);
    }
    return tokens;
}

class Auditor
{
public:
    Auditor(const Stand &stand, const std::vector<std::vector<Deed>> &journals)
        : stand_(stand)
    {
        for (const auto &journal : journals)
            for (const Deed &deed : journal)
                deeds_.push_back(&deed);
        for (const Deed *deed : deeds_)
            index(*deed);
    }

    Findings run()
    {
        findings_.orders = int(stand_.orders.size());
        findings_.lines = stand_.lines;
        findings_.entries = stand_.entries;
        findings_.products = int(stand_.products.size());
        checkRows();
        for (const Deed *deed : deeds_)
            check(*deed);
        checkTakenOnce();
        for (const auto &[key, order] : stand_.orders)
            checkOrder(key, order);
        checkEdits();
        checkProducts();
        return std::move(findings_);
    }

private:
    void index(const Deed &deed)
    {
        (deed.state == State::Done      ? findings_.acknowledged
         : deed.state == State::Refused ? findings_.refused
                                        : findings_.unfinished)++;
        for (const qint64 token : added(deed)) {
            adders_[token] = &deed;
            // A desk that died between a line and the new totals leaves the old ones.
            const auto row = stand_.rows.find(token);
            if (deed.state == State::Open && writesLines(deed) && row != stand_.rows.end())
                unsettled_.insert(row->second.order);
        }
        if (const qint64 token = deed.number("gone"))
            takers_[token].push_back(&deed);
        for (const char *name : {"order", "to"}) {
            const auto key = qint32(deed.number(name));
            if (key && std::find(ofOrder_[key].begin(), ofOrder_[key].end(), &deed) == ofOrder_[key].end())
                ofOrder_[key].push_back(&deed);
        }
        if (deed.number("product"))
            ofProduct_[deed.number("product")].push_back(&deed);
        if (deed.number("to") == 0 && (deed.kind == "sell-new" || deed.kind == "return"))
            withoutOrder_.push_back(&deed);
    }

    /// Rows of the database that nobody added, that stand twice, or whose order is gone.
    void checkRows()
    {
        for (auto row = stand_.rows.begin(); row != stand_.rows.end(); ++row) {
            const auto &[token, place] = *row;
            if (!adders_.count(token))
                fault("a row with %1 on order %2 was added by nobody", token, place.order);
            if (!stand_.orders.count(place.order))
                fault("the row with %1 stands without its order %2", token, place.order);
            if (stand_.rows.count(token) > 1)
                fault("the row with %1 stands twice, on order %2", token, place.order);
        }
    }

    void check(const Deed &deed)
    {
        const std::vector<qint64> tokens = added(deed);
        const auto stands = [this](qint64 token) { return stand_.rows.count(token) > 0; };
        // A row of a desk that was killed may be deleted at the next desk.
        const auto stoodOnce = [&](qint64 token) { return stands(token) || takenLater(token); };
        const bool some = std::any_of(tokens.begin(), tokens.end(), stands);
        if (deed.state == State::Done) {
            for (const qint64 token : tokens)
                if (!stands(token) && !mayBeGone(deed, token))
                    fault("the acknowledged row with %1 on order %2 is lost", token, orderOf(deed));
        } else if (!std::is_partitioned(tokens.begin(), tokens.end(), stoodOnce) && !orderMayBeGone(orderOf(deed))) {
            fault("a later part of the payment stands without an earlier one: %1 on order %2", tokens.front(),
                  orderOf(deed));
        } else if (some) {
            ++findings_.halfDone;
        }
        if (deed.state == State::Done && deed.kind == "delete" && stand_.orders.count(orderOf(deed)))
            fault("%1 order was acknowledged as deleted and stands: %2", 1, orderOf(deed));
        if (const qint64 token = deed.number("gone"); token && deed.state == State::Done && stands(token))
            fault("the row with %1 was acknowledged as deleted and stands on order %2", token, orderOf(deed));
        if (deed.state == State::Refused)
            checkConflict(deed, tokens, some);
    }

    /// A refusal must have its reason in what another desk wrote since the rows were read, to the order most often.
    void checkConflict(const Deed &deed, const std::vector<qint64> &tokens, bool some)
    {
        // One of its own whose answer was lost may have been saved behind what it read then.
        const auto wrote = [&](const Deed *other) {
            const bool isAnothers = other->desk != deed.desk || (other != &deed && other->state == State::Open);
            return isAnothers && other->state != State::Refused && other->begun <= deed.ended
                   && (other->state == State::Open || other->ended >= deed.number("seen"));
        };
        const auto wroteToPatient = [&](const Deed *other) {
            return other->number("cust") == deed.number("cust") && wrote(other);
        };
        const auto others = ofOrder_.find(orderOf(deed));
        if (refusedForProduct(deed)) {
            ++findings_.conflicts;
            return;
        }
        // Which order such an operation goes to is not known before it is done.
        const bool anyOrder = deed.kind == "sell-new" || deed.kind == "return";
        if (metAnotherOrder(deed)
            || (others != ofOrder_.end() && std::any_of(others->second.begin(), others->second.end(), wrote))
            || (anyOrder && std::any_of(deeds_.begin(), deeds_.end(), wroteToPatient)))
            ++findings_.conflicts;
        else if (std::none_of(withoutOrder_.begin(), withoutOrder_.end(), wroteToPatient))
            findings_.faults << QStringLiteral("%1 on order %2 was refused, and no other desk wrote there: %3")
                                    .arg(QString::fromLatin1(deed.kind))
                                    .arg(orderOf(deed))
                                    .arg(deed.reason);
        // What is one step must leave nothing when it is refused.
        if (some
            && (deed.kind == "collect" || deed.kind == "entry" || deed.kind == "pay-more"
                || deed.kind == "change-entry"))
            fault("the refused row with %1 stands on order %2", tokens.front(), orderOf(deed));
    }

    /// MariaDB locks the gaps between rows, too: desks at different orders may wait for one another there, and it refuses one.
    static bool metAnotherOrder(const Deed &deed)
    {
        return deed.reason.contains(QLatin1String("-MariaDB")) && deed.reason.contains(QLatin1String("Deadlock found"));
    }

    /// One that is deleted cannot be sold or deleted again, and one that was sold not be deleted.
    bool refusedForProduct(const Deed &deed)
    {
        const auto &deeds = ofProduct_[deed.number("product")];
        return deed.number("product") && std::any_of(deeds.begin(), deeds.end(), [&](const Deed *other) {
                   const bool deletes = other->kind == "delete-product";
                   return other != &deed && other->state != State::Refused && other->begun <= deed.ended
                          && (deletes || deed.kind == "delete-product");
               });
    }

    /// Products stand as they were acknowledged, and no line is left without one.
    void checkProducts()
    {
        std::set<qint64> standing;
        for (const auto &[key, token] : stand_.products) {
            standing.insert(token);
            for (const Deed *deed : ofProduct_[key])
                if (deed->kind == "delete-product" && deed->state == State::Done)
                    fault("the product with %1 was acknowledged as deleted and stands as %2", token, key);
        }
        std::size_t added = 0, deleted = 0, open = 0;
        for (const Deed *deed : deeds_) {
            if (deed->kind != "product" && deed->kind != "delete-product")
                continue;
            open += deed->state == State::Open;
            if (deed->state == State::Done)
                ++(deed->kind == "product" ? added : deleted);
            if (deed->kind == "product" && deed->state == State::Refused)
                fault("the product with %1 was refused: %2", deed->number("product-token"), 0);
        }
        if (standing.size() + deleted > added + open || standing.size() + deleted + open < added)
            fault("%1 products stand, %2 should", qint64(standing.size()), qint32(added - deleted));
        for (const qint32 order : stand_.linesWithoutProduct)
            fault("%1 line stands without its product, on order %2", 1, order);
    }

    void checkOrder(qint32 key, const Stand::Order &order)
    {
        qint64 owed = 0;
        std::set<qint64> possible{0};
        bool unsettled = false;
        for (const Deed *deed : ofOrder_[key]) {
            const qint64 change = deed->number("owed");
            // A payment of outstanding money is one with its row: it counts exactly when the row stands or was deleted.
            const bool counts = deed->state == State::Done
                                || (deed->kind == "collect"
                                    && (stand_.rows.count(deed->number("token")) || takenLater(deed->number("token"))));
            if (counts)
                owed += change;
            else if (deed->kind == "owe" && deed->state == State::Open)
                for (const qint64 earlier : std::vector(possible.begin(), possible.end()))
                    possible.insert(earlier + change);
            unsettled = unsettled || (deed->kind == "delete-line" && deed->state == State::Open);
        }
        if (!possible.count(order.owed - owed))
            fault("outstanding money of %1, not as paid and owed, on order %2", order.owed, key);
        if (!order.summed && !unsettled && !unsettled_.count(key))
            fault("the totals are not those of the %1 orders' lines: order %2", 1, key);
    }
    /// Of two desks that delete the same, one must have been told that it did not.
    void checkTakenOnce()
    {
        const auto done = [](const Deed *deed) { return deed->state == State::Done; };
        for (const auto &[token, takers] : takers_)
            if (std::count_if(takers.begin(), takers.end(), done) > 1)
                fault("the row with %1 was acknowledged as deleted twice, on order %2", token,
                      orderOf(*takers.front()));
        for (const auto &[key, deeds] : ofOrder_)
            if (std::count_if(deeds.begin(), deeds.end(), [&](const Deed *d) { return d->kind == "delete" && done(d); })
                > 1)
                fault("%1 order was acknowledged as deleted twice: %2", 1, key);
    }

    /// Each acknowledged edit began from the one before it, so no two from the same.
    void checkEdits()
    {
        std::map<std::pair<qint32, qint64>, const Deed *> from;
        for (const Deed *deed : deeds_) {
            if (deed->kind != "edit" || deed->state != State::Done)
                continue;
            const auto [earlier, first] = from.insert({{orderOf(*deed), deed->number("before")}, deed});
            if (!first)
                fault("two edits from the same state were acknowledged, one of them is lost: %1 on order %2",
                      deed->number("token"), orderOf(*deed));
        }
        for (const auto &[key, order] : stand_.orders)
            if (!leadsTo(order.memo, key, 0, from))
                fault("the memo %1 is not that of the last acknowledged edit of order %2", order.memo, key);
    }
    /// Whether the edits of the order lead from one memo to the other. An edit in which the desk died may have been saved.
    bool leadsTo(qint64 memo, qint32 key, qint64 at,
                 const std::map<std::pair<qint32, qint64>, const Deed *> &acknowledged)
    {
        if (const auto next = acknowledged.find({key, at}); next != acknowledged.end())
            return leadsTo(memo, key, next->second->number("token"), acknowledged);
        if (memo == at)
            return true;
        const std::vector<const Deed *> &deeds = ofOrder_[key];
        return std::any_of(deeds.begin(), deeds.end(), [&](const Deed *deed) {
            return deed->kind == "edit" && deed->state == State::Open && deed->number("before") == at
                   && leadsTo(memo, key, deed->number("token"), acknowledged);
        });
    }

    bool mayBeGone(const Deed &deed, qint64 token)
    {
        if (takenLater(token))
            return true;
        const qint32 order = orderOf(deed);
        return order ? orderMayBeGone(order) : deletedFor(deed.number("cust"));
    }
    bool takenLater(qint64 token)
    {
        const auto &takers = takers_[token];
        return std::any_of(takers.begin(), takers.end(),
                           [](const Deed *taker) { return taker->state != State::Refused; });
    }
    bool orderMayBeGone(qint32 order)
    {
        if (stand_.orders.count(order))
            return false; // an order goes with all its rows or not at all
        return std::any_of(ofOrder_[order].begin(), ofOrder_[order].end(),
                           [](const Deed *deed) { return deed->kind == "delete" && deed->state != State::Refused; });
    }
    /// The line was deleted before its desk could look up where it went.
    bool deletedFor(qint64 patient) const
    {
        return std::any_of(deeds_.begin(), deeds_.end(), [&](const Deed *deed) {
            return deed->kind == "delete" && deed->number("cust") == patient && deed->state != State::Refused;
        });
    }
    static qint32 orderOf(const Deed &deed)
    {
        const auto to = qint32(deed.number("to"));
        const bool elsewhere = deed.kind == "return" || deed.kind == "sell-new";
        return elsewhere && (to || deed.state == State::Done) ? to : qint32(deed.number("order"));
    }

    void fault(const char *sentence, qint64 token, qint32 order)
    {
        findings_.faults << QString::fromLatin1(sentence).arg(token).arg(order);
    }

    const Stand &stand_;
    std::vector<const Deed *> deeds_;
    std::unordered_map<qint64, const Deed *> adders_;
    std::unordered_map<qint64, std::vector<const Deed *>> takers_;
    std::unordered_map<qint32, std::vector<const Deed *>> ofOrder_;
    std::unordered_map<qint64, std::vector<const Deed *>> ofProduct_;
    std::set<qint32> unsettled_;
    std::vector<const Deed *> withoutOrder_; ///< that wrote to an order which the journal does not know
    Findings findings_;
};

} // namespace

Findings audit(const ado::Connection &clinic, const Before &before, const std::vector<std::vector<Deed>> &journals)
{
    const Stand stand = readStand(clinic, before);
    return Auditor(stand, journals).run();
}

} // namespace trial
