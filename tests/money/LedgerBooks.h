#pragma once

#include "money/LedgerOperations.h"

#include <QStringList>

#include <map>
#include <optional>

using Won = qint64;

/// What the database should hold, kept beside it in whole won.
struct Books
{
    struct Product { int price; bool taxed; };
    struct Order { QDate date; Won taxed = 0, taxFree = 0, discount = 0; std::optional<Won> owed = 0; };
    struct Line { int order, product, price, discount, count; };
    struct Entry { int order, kind, money; QDate date; };

    std::map<int, Product> products;
    std::map<int, Order> orders;
    std::map<int, Line> lines;
    std::map<int, Entry> entries;

    /// Lines of a product that is gone count in the discounts only.
    void sum(int key)
    {
        Order &order = orders.at(key);
        order.taxed = order.taxFree = order.discount = 0;
        for (const auto &[lineKey, line] : lines) {
            if (line.order != key)
                continue;
            order.discount += Won(line.discount) * line.count;
            if (const auto product = products.find(line.product); product != products.end())
                (product->second.taxed ? order.taxed : order.taxFree) += Won(line.price - line.discount) * line.count;
        }
    }
    Won ledger(int key, int kind) const
    {
        Won sum = 0;
        for (const auto &[entryKey, entry] : entries)
            sum += entry.order == key && entry.kind == kind ? entry.money : 0;
        return sum;
    }
    Won balance(int key) const
    {
        const Order &order = orders.at(key);
        return order.taxed + order.taxFree + ledger(key, ledger::Refund) - ledger(key, ledger::Cut)
            - ledger(key, ledger::Discount) - ledger(key, ledger::Payment);
    }
    QStringList text() const
    {
        QStringList rows;
        for (const auto &[key, o] : orders)
            rows << QStringLiteral("%1|%2|%3|%4|%5|%6|").arg(key).arg(o.date.toString(Qt::ISODate)).arg(o.taxed).arg(o.taxFree)
                        .arg(o.discount).arg(o.taxed + o.taxFree) + (o.owed ? QString::number(*o.owed) : QStringLiteral("NULL"));
        for (const auto &[key, l] : lines)
            rows << QStringLiteral("%1|%2|%3|%4|%5|%6").arg(key).arg(l.order).arg(l.product).arg(l.price).arg(l.discount).arg(l.count);
        for (const auto &[key, e] : entries)
            rows << QStringLiteral("%1|%2|%3|%4|%5").arg(key).arg(e.order).arg(e.kind).arg(e.money).arg(e.date.toString(Qt::ISODate));
        return rows;
    }
};
