#include "components/VantoPayPeriod/clsVantoPayPeriod.h"
#include "platform/automation/ClassServer.h"

namespace {

automation::ClassServer &classServer()
{
    static automation::ClassServer server(
        QStringLiteral("VantoPayPeriod"),
        {{QStringLiteral("VantoPayPeriod.clsVantoPayPeriod"), []() -> QObject * { return new clsVantoPayPeriod; }}});
    return server;
}

} // namespace

ZELVO_CLASS_SERVER(classServer)
