#pragma once

namespace runtime {

/// A place in the source. As a default argument it is the caller's.
struct Place
{
    const char *file = "";
    int line = 0;

    static constexpr Place here(const char *file = __builtin_FILE(), int line = __builtin_LINE())
    {
        return {file, line};
    }
};

} // namespace runtime
