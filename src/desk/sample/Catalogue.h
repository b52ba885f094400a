#pragma once

#include <QDate>
#include <QString>

#include <optional>
#include <vector>

namespace sample {

struct Product
{
    QString category;
    QString name;
    qint64 price = 0; ///< won
    bool taxed = true;
    bool handled = true;
    std::optional<bool> hidden; ///< older rows have no value
    QString memo;
    QDate added;
};

struct Dealer
{
    QString name;
    QString registration;
    QString phone;
    QString address;
    QString memo;
    bool trading = true;
};

/// The shop's goods; beyond those of the list, further packings of them under names of their own. Key of an element is
/// its index + 1.
std::vector<Product> products(int count);
/// How many goods the list itself has.
int listedProducts();
std::vector<Dealer> dealers();

} // namespace sample
