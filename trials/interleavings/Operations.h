#pragma once

#include "tests/faults/Desk.h"

#include <functional>
#include <vector>

namespace trial {

/// What two operations may both be about.
enum Thing : unsigned {
    Order1 = 1 << 0,    ///< that it is there, with the patient and date shown
    Fields1 = 1 << 1,   ///< what is typed into it
    Owed1 = 1 << 2,     ///< its outstanding money
    Lines1 = 1 << 3,    ///< which lines it has
    Line1 = 1 << 4,     ///< its first line
    Ledger1 = 1 << 5,   ///< which ledger rows it has
    Entry1 = 1 << 6,    ///< the first of them
    Ledger2 = 1 << 7,   ///< of the unpaid order
    Owed2 = 1 << 8,     ///< outstanding money of that
    Product2 = 1 << 10, ///< that it is there
    Fields2 = 1 << 11,  ///< what stands in it
    Sold2 = 1 << 12,    ///< whether there are lines of it
    Purchase1 = 1 << 13,
    Dealer2 = 1 << 14,     ///< that it is there
    DealerText2 = 1 << 15, ///< what stands in it
    Bought2 = 1 << 16,     ///< whether there are purchases from it
    NewDay = 1 << 17,      ///< the orders of today
};

/// Sums of an order that add up as long as every desk reckons them from the rows.
enum Sum : unsigned {
    TaxParts = 1 << 0, ///< which part is taxed; the whole adds up all the same
    Discount = 1 << 1,
    Owed = 1 << 2,
};

/// An operation of the module as two or three desks are to run it at once.
struct Operation
{
    const char *name;
    /// It must be refused once another has changed one of these since the desk looked, and may be for the others.
    unsigned needs;
    unsigned minds;
    unsigned changes;
    /// Looks at what the window shows, and returns the work; that tells or raises as Work::run does.
    std::function<std::function<bool()>(Desk &desk)> look;
    unsigned sets = 0; ///< the sums that it sets without regard to what they were
};

const std::vector<Operation> &operations();
/// Makes the rows current that the operations are about, before any of them begins: a user sees what he edits or deletes,
/// and what another desk does to it from then on is a conflict.
void showRows(SaleSession &session);
/// Index of the one of that name; raises std::runtime_error.
int operationNamed(const QString &name);

} // namespace trial
