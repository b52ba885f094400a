#include "components/VantoOneDay/clsVantoOneDay.h"
#include "platform/automation/ClassServer.h"

namespace {

automation::ClassServer &classServer()
{
    static automation::ClassServer server(
        QStringLiteral("VantoOneDay"),
        {{QStringLiteral("VantoOneDay.clsVantoOneDay"), []() -> QObject * { return new clsVantoOneDay; }}});
    return server;
}

} // namespace

ZELVO_CLASS_SERVER(classServer)
