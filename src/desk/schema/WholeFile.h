#pragma once

#include <QString>

#include <functional>

namespace schema {

/// Has a database file made under another name, which `make` gets, so that only a whole one bears its own. Nothing of it
/// stays behind an error of `make`, nor where it cannot be given its name; then the result is false.
bool makeWholeFile(const QString &file, const std::function<void(const QString &unfinished)> &make);

} // namespace schema
