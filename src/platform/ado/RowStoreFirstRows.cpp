// A long list that is shown before it is read whole.
#include "platform/ado/ConnectionPrivate.h"
#include "platform/ado/RowStore.h"

#include <utility>

namespace ado {

/// The embedded engine finds keys and order in much less time than it takes for the rows; to a server it would be one way more.
/// False for a list that is short, or cannot be ordered here: it is read whole at once.
bool RowStore::loadFirstRows()
{
    constexpr int longList = 1000;
    constexpr std::size_t screen = 64; ///< rows, about what a grid shows
    Connection::Private &layer = connection_->layer();
    if (layer.driver->engine() != Engine::SQLite || !shape_.takesFirstRows())
        return false;
    const auto keys = std::make_shared<const CellTable>(layer.read(layer.driver->command() << shape_.keys()));
    if (keys->rowCount() < longList)
        return false;
    Command command = layer.driver->command() << shape_.allOfKeys() << u" WHERE " << shape_.keyName() << u" IN (";
    QStringView separator;
    for (const Physical row : RowOrdering(keys, keyOrder(), 0).first(screen)) {
        command << std::exchange(separator, u", ");
        command.value(keys->raw(static_cast<int>(row), 0));
    }
    loadWhole(command << u")", nullptr);
    extent_ = Extent::FirstRows;
    return true;
}

} // namespace ado
