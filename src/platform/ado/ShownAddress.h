#pragma once

#include <QString>

namespace ado {

/// An address fit for a terminal, a title or the log: without its password and without whatever might hold one. Only what
/// is known to hold none is shown, so an address of another form shows nothing but its kind.
QString addressToShow(const QString &address);

/// Whether a server's address can be taken apart in one way only. A sign of a password that is not percent-encoded would
/// otherwise be taken for the end of the server's name, and be shown as part of that by others.
bool isWellFormed(const QString &address);

} // namespace ado
