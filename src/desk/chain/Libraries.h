#pragma once

#include <initializer_list>

/// The component libraries, which this program knows by their names only.
namespace libraries {

/// Lets them register themselves for this user: those that lie beside the program, or else the installed ones.
void enter(std::initializer_list<const char *> names);

} // namespace libraries
