#include "platform/ado/SortColumn.h"

#include <algorithm>
#include <string_view>

namespace ado {

void SortColumn::makeKeys()
{
    const auto rows = static_cast<std::size_t>(table_.rowCount());
    keys_.reserve(rows);
    for (std::size_t row = 0; row < rows; ++row)
        keys_.push_back(keyOf(static_cast<std::uint32_t>(row)));
}

SortColumn::Beginning SortColumn::beginningOf(std::uint32_t row, std::size_t from)
{
    SortKey key = keys()[row];
    if (from > 0) {
        const std::string_view rest = std::string_view(key.text, key.length).substr(from, sizeof(Sixteen));
        Sixteen bytes;
        std::ranges::copy(rest, bytes.bytes.begin());
        key.prefix = bytes.prefix();
        key.next = bytes.next();
        key.inside = from + rest.size() == key.length && rest.find('\0') == std::string_view::npos;
    }
    using Rest = Beginning::Rest;
    const bool further = from > 0 ? key.length > from + sizeof(Sixteen) : key.covered > 0;
    const std::uint64_t turned = descending_ ? ~std::uint64_t{0} : 0;
    const Rest behindIt = key.inside ? Rest::None : further ? Rest::Further : Rest::Unclear;
    return {key.prefix ^ turned, key.next ^ turned, row, static_cast<std::uint8_t>(key.rank ^ turned), behindIt};
}

} // namespace ado
