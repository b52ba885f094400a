#pragma once

#include "platform/ado/Command.h"

namespace ado {

/// The statement with "?" for the whole numbers that it compares or assigns, and the numbers beside it: texts that differ
/// only in a key become one, which the engine keeps prepared. For the embedded engine. Numbers in other places stay, since
/// there they can mean a column, or be part of a name; so do all of a statement that brings values already.
Command liftNumbers(const Command &statement);

} // namespace ado
