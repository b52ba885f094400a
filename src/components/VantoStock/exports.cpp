#include "platform/automation/ClassServer.h"
#include "components/VantoStock/clsVantoStock.h"

namespace {

automation::ClassServer &classServer()
{
    static automation::ClassServer server(QStringLiteral("VantoStock"),
                                          {{QStringLiteral("VantoStock.clsVantoStock"),
                                            []() -> QObject * { return new clsVantoStock; }}});
    return server;
}

} // namespace

ZELVO_CLASS_SERVER(classServer)
