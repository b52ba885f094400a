#pragma once

#include "platform/runtime/RuntimeError.h"

namespace backup {

/// The progress function stopped the work, and what was begun is undone.
class Stopped : public runtime::RuntimeError
{
public:
    Stopped()
        : RuntimeError(runtime::ErrorNumber::Database,
                       QStringLiteral("중단했습니다. 데이터베이스는 바뀌지 않았습니다."))
    {
    }
};

[[noreturn]] inline void refuse(const QString &what)
{
    throw runtime::RuntimeError(runtime::ErrorNumber::Database, what);
}

[[noreturn]] inline void stop()
{
    throw Stopped();
}

} // namespace backup
