#include "components/VantoSalesPeriod/clsVantoSalesPeriod.h"
#include "platform/automation/ClassServer.h"

namespace {

automation::ClassServer &classServer()
{
    static automation::ClassServer server(QStringLiteral("VantoSalesPeriod"),
                                          {{QStringLiteral("VantoSalesPeriod.clsVantoSalesPeriod"),
                                            []() -> QObject * { return new clsVantoSalesPeriod; }}});
    return server;
}

} // namespace

ZELVO_CLASS_SERVER(classServer)
