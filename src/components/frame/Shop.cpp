#include "components/frame/Shop.h"

#include "components/frame/Reading.h"
#include "platform/runtime/Log.h"
#include "platform/runtime/Operation.h"
#include "platform/runtime/RuntimeError.h"

namespace statistics {

QString shopName(const ado::ConnectionPtr &connection)
{
    const runtime::Operation operation("read the shop's name");
    QString name;
    Figure figure{QStringLiteral("SELECT tpsps_Value FROM tPSProperties WHERE tpsps_Key = '지점명'")};
    figure.take = [&name](const Record &row) { name = row.text(0).trimmed(); };
    try {
        Reading(connection, {figure}, {}).readAll();
    } catch (const runtime::RuntimeError &) {
        runtime::trapped(); // the figures are worth their paper without it
    }
    return name;
}

} // namespace statistics
