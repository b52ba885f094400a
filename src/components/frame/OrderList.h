#pragma once

#include "components/frame/Behind.h"

#include <compare>
#include <map>
#include <tuple>

namespace statistics {

/// The orders behind a figure, the latest first; the oldest of very many together in one row. Orders that add nothing are
/// left out.
class OrderList
{
public:
    static constexpr std::size_t mostShown = 1000;

    explicit OrderList(Behind behind);

    const Behind &behind() const { return behind_; }

    /// Two readings, the second one for what the first has found.
    std::vector<Figure> orders();
    std::vector<Figure> details();

    Sheet sheet() const;
    std::size_t count() const { return amounts_.size(); }
    /// Whether the orders still make up the figure.
    bool isWhole() const;

private:
    struct Key
    {
        QDate day;
        int order = 0;
        int customer = 0;

        friend auto operator<=>(const Key &a, const Key &b)
        {
            return std::tuple(b.day.toJulianDay(), b.order, b.customer)
                   <=> std::tuple(a.day.toJulianDay(), a.order, a.customer);
        }
    };
    struct Customer
    {
        QString chart;
        QString name;
    };

    Row rowOf(const Key &key, const Sum &amount) const;

    Behind behind_;
    std::map<Key, Sum> amounts_; ///< the latest first
    std::map<int, Customer> customers_;
    std::map<int, QStringList> goods_; ///< by order
};

} // namespace statistics
