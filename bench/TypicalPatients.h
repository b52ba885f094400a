#pragma once

#include "desk/window/Patient.h"

namespace bench {

/// Some patients with about as many orders as most who buy have.
std::vector<desk::Patient> typicalPatients(ado::Connection &connection);
/// The patient with the most orders.
desk::Patient busiestPatient(ado::Connection &connection);

/// An order of 200 lines and whose it is.
struct LongOrder
{
    desk::Patient patient;
    int lngOrdMPK = 0;
};
LongOrder longOrder(ado::Connection &connection);

} // namespace bench
