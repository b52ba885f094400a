#pragma once

#include "components/central/LocalList.h"

#include <utility>

namespace central {

/// What is to be written so that a clinic's list follows the chain's.
struct Plan
{
    std::vector<Product> added;                      ///< products that the clinic does not have
    std::vector<std::pair<qint32, Product>> changed; ///< by the clinic's key
    std::vector<std::pair<qint32, qint32>> linked; ///< the clinic's key and the head office's, newly known for the same
    std::vector<qint32> released;                  ///< the clinic's keys of products that are the chain's no more
    std::vector<std::pair<qint32, Product>> withdrawn; ///< no longer handled; among no others
};

/// A product of the chain that is new to the clinic is taken for the one of that name and category which the clinic has
/// already, or of that name alone: so its sales and its stock go on under their key. What the clinic has beside the chain's
/// products is its own, and stays as it is. `sameList`: the links are those of the list that is offered.
Plan planOf(const Offer &offer, const LocalList &local, bool sameList);

} // namespace central
