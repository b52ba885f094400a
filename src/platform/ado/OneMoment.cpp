#include "platform/ado/OneMoment.h"

#include "platform/ado/Driver.h"
#include "platform/ado/RowStore.h"

#include <utility>

namespace ado {

OneMoment::OneMoment(ConnectionPtr connection)
{
    if (connection && RowStore::driverOf(*connection).holdMoment())
        connection_ = std::move(connection);
}

OneMoment::~OneMoment()
{
    if (connection_)
        RowStore::driverOf(*connection_).letMomentGo();
}

} // namespace ado
