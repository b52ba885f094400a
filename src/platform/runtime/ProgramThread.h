#pragma once

namespace runtime {

/// Raises InvalidCall on another thread than the program's: connections, lists and windows belong to that one.
void demandProgramThread();

} // namespace runtime
