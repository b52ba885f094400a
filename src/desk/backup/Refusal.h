#pragma once

#include "platform/runtime/RuntimeError.h"

namespace backup {

[[noreturn]] inline void refuse(const QString &what)
{
    throw runtime::RuntimeError(runtime::ErrorNumber::Database, what);
}

} // namespace backup
