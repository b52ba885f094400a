#pragma once

#include "platform/ado/Connection.h"

#include <QStringList>

#include <map>
#include <set>
#include <tuple>
#include <vector>

namespace trial {

/// What stands in the clinic's tables: by table and key the values.
using Rows = std::map<QString, std::map<qint64, QStringList>>;
Rows readRows(const ado::Connection &clinic);

/// The rows that an operation changed, took away and added.
struct Change
{
    struct Cell
    {
        QString table;
        qint64 key;
        qsizetype column;
        bool operator==(const Cell &) const = default;
        bool operator<(const Cell &other) const
        {
            return std::tie(table, key, column) < std::tie(other.table, other.key, other.column);
        }
    };

    std::map<Cell, QString> written;
    std::set<std::pair<QString, qint64>> gone;
    std::map<QString, std::multiset<QStringList>> added; ///< without keys and sums that are given by the database

    bool operator==(const Change &) const = default;
};
Change changeOf(const Rows &before, const Rows &after);

/// Whether what became of the rows is what those changes make together, in whatever order; a sentence when not.
struct Allowance
{
    unsigned set = 0;       ///< Sums that one of them sets without regard to what they were
    bool reckoned = false;  ///< one of them reckons the sums of the order anew from its lines
    bool sharedDay = false; ///< two may use one new order
};
QString differenceFrom(const Rows &before, const Change &found, const std::vector<const Change *> &parts,
                       Allowance allowance);

} // namespace trial
