#pragma once

#include "platform/ado/Connection.h"

#include <functional>

/// Sample clinics for trying, testing and measuring: the same rows on every engine and on every day.
namespace sample {

enum class Size {
    Empty,     ///< tables and indexes only
    Small,     ///< about 60 goods, 30 patients, a year of trade
    Hundredth, ///< the large clinic's goods and patients, 10,000 orders
    Tenth,     ///< the same, 100,000 orders
    Large,     ///< 20,000 goods, 50,000 patients, 1,000,000 orders
};

/// Told now and then while rows are written; answering false stops the work. May be empty.
using Progress = std::function<bool(qint64 done, qint64 total)>;

/// Makes the clinic at an address that holds no tables yet, all of it or nothing: a file of the embedded engine comes to
/// stand at its place when it is finished, on a server one transaction spans the work. Raises RuntimeError, also when it
/// was stopped.
void makeClinic(const QString &address, Size size, const Progress &progress = {});

/// The same into an open database without tables, within one transaction.
void fill(ado::Connection &connection, Size size, const Progress &progress = {});

} // namespace sample
