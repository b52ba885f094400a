#pragma once

#include "trials/audit/Audit.h"

#include <unordered_map>
#include <vector>

namespace trial {

/// What a trial left in the database.
struct Stand
{
    struct Order
    {
        qint64 address = 0; ///< the token it was made with
        qint64 memo = 0;    ///< the token of its last edit
        qint64 owed = 0;
        bool summed = false; ///< its totals are those of its lines
    };
    struct Row
    {
        qint32 order = 0;
        bool ledger = false;
    };

    std::unordered_map<qint32, Order> orders;
    std::unordered_multimap<qint64, Row> rows;   ///< by their tokens
    std::unordered_map<qint32, qint64> products; ///< their tokens by their keys
    std::vector<qint32> linesWithoutProduct;     ///< orders of such lines
    int lines = 0;
    int entries = 0;
};

/// Raises std::runtime_error when the database refuses.
Stand readStand(const ado::Connection &clinic, const Before &before);

} // namespace trial
