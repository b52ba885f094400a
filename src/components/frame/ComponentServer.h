#pragma once

#include "platform/automation/ClassServer.h"

namespace statistics {

/// Serves the one class of a component library, LIBRARY.clsLIBRARY.
template <typename Component>
automation::ClassServer &componentServer(const QString &library)
{
    static automation::ClassServer server(
        library, {{library + QStringLiteral(".cls") + library, []() -> QObject * { return new Component; }}});
    return server;
}

} // namespace statistics

/// The exports of the library NAME.
#define ZELVO_STATISTIC_COMPONENT(NAME)                                                                                \
    static automation::ClassServer &classServer()                                                                      \
    {                                                                                                                  \
        return statistics::componentServer<cls##NAME>(QStringLiteral(#NAME));                                          \
    }                                                                                                                  \
    ZELVO_CLASS_SERVER(classServer)
