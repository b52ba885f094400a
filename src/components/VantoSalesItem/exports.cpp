#include "components/VantoSalesItem/clsVantoSalesItem.h"
#include "platform/automation/ClassServer.h"

namespace {

automation::ClassServer &classServer()
{
    static automation::ClassServer server(
        QStringLiteral("VantoSalesItem"),
        {{QStringLiteral("VantoSalesItem.clsVantoSalesItem"), []() -> QObject * { return new clsVantoSalesItem; }}});
    return server;
}

} // namespace

ZELVO_CLASS_SERVER(classServer)
