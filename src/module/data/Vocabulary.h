#pragma once

#include "platform/runtime/RuntimeError.h"

#include <QString>

#include <algorithm>
#include <iterator>

/// The entry of that name in a table of settings; raises NoSuchMember where there is none.
template <typename Property, std::size_t Count>
const Property &findProperty(const Property (&vocabulary)[Count], QStringView name)
{
    const Property *found = std::ranges::find(vocabulary, name, &Property::name);
    if (found == std::end(vocabulary))
        throw runtime::RuntimeError(runtime::ErrorNumber::NoSuchMember,
                                    QStringLiteral("없는 설정 항목입니다: %1").arg(name));
    return *found;
}
