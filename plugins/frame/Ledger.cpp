#include "plugins/frame/Ledger.h"

namespace statistics {

Medium mediumOf(const QString &method)
{
    if (method.endsWith(QLatin1Char('1')))
        return Medium::Card;
    return method.endsWith(QLatin1Char('2')) ? Medium::Bank : Medium::Cash;
}

bool isAgainstOutstanding(const QString &method)
{
    return method.startsWith(QLatin1Char('1'));
}

} // namespace statistics
