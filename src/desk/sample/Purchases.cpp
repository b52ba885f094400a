#include "desk/sample/Purchases.h"

#include "desk/sample/Random.h"

#include <algorithm>

namespace sample {

std::vector<Purchase> purchases(const std::vector<Product> &goods, const std::vector<int> &sold, int dealers,
                                QDate first, QDate last)
{
    std::vector<Purchase> list;
    for (int product = 0; product < int(goods.size()); ++product) {
        Random random(std::uint64_t(product) + 424'242);
        const int needed = sold[std::size_t(product)] + random.between(5, 40);
        const int deliveries = std::min(needed, random.between(2, 4));
        const int apart = int(first.daysTo(last)) / deliveries;
        const int dealer = random.below(dealers);
        const qint64 cost = goods[std::size_t(product)].price * random.between(52, 66) / 1'000 * 10;
        for (int delivery = 0; delivery < deliveries; ++delivery) {
            Purchase next;
            next.product = product;
            next.dealer = dealer;
            next.date = first.addDays(delivery * apart + random.below(std::max(1, apart / 4)) - 10);
            next.count = needed / deliveries + (delivery < needed % deliveries ? 1 : 0);
            next.unitPrice = cost;
            next.discount = random.percent(20) ? cost * next.count * 3 / 100 : 0;
            next.memo = random.percent(8) ? QStringLiteral("세금계산서 발행") : QStringLiteral("");
            list.push_back(next);
        }
    }
    std::stable_sort(list.begin(), list.end(),
                     [](const Purchase &one, const Purchase &other) { return one.date < other.date; });
    return list;
}

} // namespace sample
