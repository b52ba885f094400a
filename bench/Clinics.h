#pragma once

#include "platform/ado/Connection.h"

#include <vector>

namespace bench {

/// The databases that are measured. They are made once and kept in the build folder; what is written in a run goes to
/// copies.
struct Clinics
{
    ado::ConnectionPtr large;        ///< the large sample clinic: 20,000 products, 50,000 patients, 1,000,000 orders
    ado::ConnectionPtr manyProducts; ///< 100,000 products and nothing else
    ado::ConnectionPtr fewProducts;  ///< 1,000 products and nothing else
    ado::ConnectionPtr tenth;        ///< a tenth of the large clinic's patients and their orders, with all products
    ado::ConnectionPtr hundredth;    ///< a hundredth of them
    ado::ConnectionPtr unjournalled; ///< the same, without the journal of changes
};

/// The clinics that differ in their orders, the smallest first, and how many orders they are called after.
struct OrderedClinic
{
    ado::ConnectionPtr connection;
    long orders = 0;
};
inline std::vector<OrderedClinic> byOrders(const Clinics &clinics)
{
    return {{clinics.hundredth, 10'000}, {clinics.tenth, 100'000}, {clinics.large, 1'000'000}};
}

/// Opens fresh copies, and makes the originals where they are missing, which takes minutes. Raises.
Clinics openClinics();

} // namespace bench
