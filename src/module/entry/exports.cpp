#include "clinic/Tables.h"
#include "data/clsSQL.h"
#include "entry/clsZelvoProductSale.h"
#include "forms/clsMyFunctions.h"
#include "money/clsOperationMoney.h"
#include "platform/automation/ClassServer.h"
#include "sales/clsFunctions.h"
#include "settings/clsFormSizePosSetting.h"
#include "settings/clsProperties.h"

namespace {

template <typename Class>
automation::ClassServer::Class served(const QString &name)
{
    return {QStringLiteral("prjZelvoProductSale.") + name, []() -> QObject * { return new Class; }};
}

/// The public types of the component, the sale itself first.
automation::ClassServer &classServer()
{
    // Whoever asks for a class reads with it soon, often on a connection that the host opened before.
    clinic::registerTables();
    static automation::ClassServer server(QStringLiteral("prjZelvoProductSale"),
                                          {
                                              served<clsZelvoProductSale>(QStringLiteral("clsZelvoProductSale")),
                                              served<clsSQL>(QStringLiteral("clsSQL")),
                                              served<clsFunctions>(QStringLiteral("clsFunctions")),
                                              served<clsMyFunctions>(QStringLiteral("clsMyFunctions")),
                                              served<clsProperties>(QStringLiteral("clsProperties")),
                                              served<clsOperationMoney>(QStringLiteral("clsOperationMoney")),
                                              served<clsFormSizePosSetting>(QStringLiteral("clsFormSizePosSetting")),
                                          });
    return server;
}

} // namespace

ZELVO_CLASS_SERVER(classServer)
