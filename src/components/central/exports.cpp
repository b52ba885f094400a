#include "clinic/Tables.h"
#include "components/central/clsZelvoCentral.h"
#include "platform/automation/ClassServer.h"

static automation::ClassServer &classServer()
{
    clinic::registerTables();
    static automation::ClassServer server(
        QStringLiteral("prjZelvoCentral"),
        {{QStringLiteral("prjZelvoCentral.clsZelvoCentral"), []() -> QObject * { return new clsZelvoCentral; }}});
    return server;
}

ZELVO_CLASS_SERVER(classServer)
