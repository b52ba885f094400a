#include "components/VantoStock/clsVantoStock.h"
#include "platform/automation/ClassServer.h"

namespace {

automation::ClassServer &classServer()
{
    static automation::ClassServer server(
        QStringLiteral("VantoStock"),
        {{QStringLiteral("VantoStock.clsVantoStock"), []() -> QObject * { return new clsVantoStock; }}});
    return server;
}

} // namespace

ZELVO_CLASS_SERVER(classServer)
