#include "components/central/Plan.h"

#include <QHash>

#include <algorithm>
#include <set>
#include <unordered_map>

namespace central {

namespace {

const qsizetype atCategory = placeOf("PM_Catagory");
const qsizetype atName = placeOf("PM_Name");
const qsizetype atHandled = placeOf("PM_IsValid");

/// The clinic's products that are nobody's yet, to be found by what they are called; of several the first that was made.
class Unclaimed
{
public:
    Unclaimed(const LocalList &local, bool sameList)
    {
        for (const auto &[key, row] : local.rows) {
            if (!row.central || !sameList)
                named_[row.product[atName]].push_back({key, row.product[atCategory]});
        }
    }

    /// 0 for none.
    qint32 claim(const Product &product, bool alsoOfOtherCategory)
    {
        const auto found = named_.find(product[atName]);
        if (found == named_.end())
            return 0;
        const auto candidate = std::ranges::find_if(
            *found, [&](const Candidate &one) { return alsoOfOtherCategory || one.category == product[atCategory]; });
        if (candidate == found->end())
            return 0;
        const qint32 key = candidate->key;
        found->erase(candidate);
        return key;
    }

private:
    struct Candidate
    {
        qint32 key;
        QString category;
    };
    QHash<QString, std::vector<Candidate>> named_;
};

class Planning
{
public:
    Planning(const Offer &offer, const LocalList &local, bool sameList)
        : offer_(offer)
        , local_(local)
        , sameList_(sameList)
    {
        for (const auto &[key, row] : local.rows) {
            if (row.central && sameList)
                keys_.emplace(*row.central, key);
        }
    }

    Plan plan()
    {
        for (const Offered &product : offer_.products)
            follow(product);
        findNew();
        if (offer_.whole)
            withdrawRest();
        return std::move(plan_);
    }

private:
    void follow(const Offered &offered)
    {
        const auto known = keys_.find(offered.key);
        if (offered.gone) {
            if (known != keys_.end())
                withdraw(known->second);
        } else if (known == keys_.end()) {
            new_.push_back(&offered);
        } else {
            change(known->second, offered.product);
        }
        if (known != keys_.end())
            told_.insert(known->second);
    }

    void change(qint32 key, const Product &product)
    {
        if (local_.rows.at(key).product != product)
            plan_.changed.emplace_back(key, product);
    }

    void withdraw(qint32 key)
    {
        Product product = local_.rows.at(key).product;
        if (product[atHandled] == QLatin1String("0"))
            return;
        product[atHandled] = QStringLiteral("0");
        plan_.withdrawn.emplace_back(key, std::move(product));
    }

    void findNew()
    {
        Unclaimed unclaimed(local_, sameList_);
        for (const bool alsoOfOtherCategory : {false, true}) {
            std::erase_if(new_, [&](const Offered *offered) {
                const qint32 key = unclaimed.claim(offered->product, alsoOfOtherCategory);
                if (key != 0) {
                    plan_.linked.emplace_back(key, offered->key);
                    told_.insert(key);
                    change(key, offered->product);
                }
                return key != 0;
            });
        }
        for (const Offered *offered : new_)
            plan_.added.push_back(offered->product);
    }

    void withdrawRest()
    {
        for (const auto &[key, row] : local_.rows) {
            if (!row.central)
                continue;
            if (!told_.contains(key))
                withdraw(key);
            if (!sameList_)
                plan_.released.push_back(key);
        }
    }

    const Offer &offer_;
    const LocalList &local_;
    const bool sameList_;
    std::unordered_map<qint32, qint32> keys_; ///< the clinic's, by the head office's
    std::set<qint32> told_;                   ///< the clinic's keys of what the offer speaks of
    std::vector<const Offered *> new_;
    Plan plan_;
};

} // namespace

Plan planOf(const Offer &offer, const LocalList &local, bool sameList)
{
    return Planning(offer, local, sameList).plan();
}

} // namespace central
