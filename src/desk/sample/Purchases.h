#pragma once

#include "desk/sample/Catalogue.h"

#include <QDate>

#include <vector>

namespace sample {

/// A purchase of one product from one dealer; amounts in won.
struct Purchase
{
    int product = 0; ///< index into the goods
    int dealer = 0;  ///< index into the dealers
    QDate date;
    int count = 0;
    qint64 unitPrice = 0;
    qint64 discount = 0; ///< on the whole purchase
    qint64 total() const { return unitPrice * count - discount; }
    QString memo;
};

/// What the shop bought so that nothing it sold was missing from the shelf; `sold` holds units by index of the goods.
std::vector<Purchase> purchases(const std::vector<Product> &goods, const std::vector<int> &sold, int dealers,
                                QDate first, QDate last);

} // namespace sample
