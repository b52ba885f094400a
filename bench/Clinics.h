#pragma once

#include "platform/ado/Connection.h"

namespace bench {

/// The databases that are measured. They are made once and kept in the build folder; what is written in a run goes to
/// copies.
struct Clinics
{
    ado::ConnectionPtr large;        ///< the large sample clinic: 20,000 products, 50,000 patients, 1,000,000 orders
    ado::ConnectionPtr manyProducts; ///< 100,000 products and nothing else
};

/// Opens fresh copies, and makes the originals where they are missing, which takes minutes. Raises.
Clinics openClinics();

} // namespace bench
