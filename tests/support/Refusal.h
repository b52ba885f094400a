#pragma once

#include "platform/runtime/RuntimeError.h"

#include <optional>
#include <string>

/// The number of the error that the work raises; none when it runs.
template <typename Work>
std::optional<runtime::ErrorNumber> errorOf(Work &&work)
{
    try {
        work();
        return std::nullopt;
    } catch (const runtime::RuntimeError &error) {
        return error.number();
    }
}

/// The words of that error; empty when it runs.
template <typename Work>
std::string refusal(Work &&work)
{
    try {
        work();
        return {};
    } catch (const runtime::RuntimeError &error) {
        return error.description().toStdString();
    }
}
