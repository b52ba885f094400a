#pragma once

#include "components/frame/Figure.h"
#include "components/frame/Period.h"
#include "components/frame/Sheet.h"

namespace statistics {

/// A figure of a report, and the orders that it is made of.
struct Behind
{
    QString of;    ///< "2026-06-10 (수)", a customer's or a product's name
    Column column; ///< the figure's
    Cell figure;
    Period period;
    /// Gives OrdM_PK (NULL: money that belongs to no order), the customer's key and the day, and behind these whatever `amount`
    /// reads. An order may come in several rows.
    Figure orders;
    std::function<Sum(const Record &row)> amount; ///< that a row adds to the figure
};

} // namespace statistics
