#include "plugins/frame/Report.h"

namespace statistics {

QString Report::lastDayStatement() const
{
    return QStringLiteral("SELECT MAX(OrdM_Date) AS LastDay FROM tPSOrderMaster WHERE OrdM_Date <= '[TO]'");
}

} // namespace statistics
