#pragma once

#include <QString>

namespace schema {

/// A clinic's address fit for a terminal: a password in it is left out.
QString addressToShow(QString address);

} // namespace schema
