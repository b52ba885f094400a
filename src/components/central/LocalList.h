#pragma once

#include "components/central/Offer.h"
#include "platform/ado/Connection.h"

#include <map>
#include <optional>

namespace central {

/// A clinic's products, and which of them is which of the chain's.
struct LocalList
{
    struct Row
    {
        Product product;
        std::optional<qint32> central; ///< the head office's key
    };

    std::map<qint32, Row> rows; ///< by the clinic's own key, which never changes

    /// Of those that are noted as another product of the chain than the offer speaks of it may hold none.
    static LocalList read(const ado::Connection &clinic, const Offer &offer);
};

/// The tables beside the product table that remember it; they are made where they are missing and the role may.
bool hasLinks(const ado::Connection &clinic);
void makeLinks(ado::Connection &clinic);

ListMark markOf(const ado::Connection &clinic);
/// How many products the clinic has beside the chain's.
qint64 ownProducts(const ado::Connection &clinic);
/// Whether somebody else changed or deleted one of the chain's products here since.
bool hasStrayed(const ado::Connection &clinic);

} // namespace central
