#pragma once

#include "components/frame/Sum.h"

#include <QDate>
#include <QString>

#include <array>
#include <optional>

namespace statistics {

/// The notes and coins of the drawer on one evening, against what it should hold.
struct CashCount
{
    static constexpr std::array<int, 8> pieces{50'000, 10'000, 5'000, 1'000, 500, 100, 50, 10};
    static bool isNote(std::size_t piece) { return pieces[piece] >= 1'000; }

    QDate day = {};
    std::array<std::optional<int>, pieces.size()> counts = {}; ///< nothing: not counted
    Sum opening = {};                                          ///< what lay in the drawer before the first customer
    Sum change = {};                                           ///< by the report

    bool isCounted() const;
    Sum amount(std::size_t piece) const;
    Sum counted() const;
    /// Below zero where money is missing.
    Sum difference() const { return counted() - opening - change; }

    /// Day, opening and counts, to be kept.
    QString toText() const;
    /// Of a text that is none, an empty count.
    static CashCount fromText(const QString &text);
};

} // namespace statistics
