#include "components/frame/Report.h"

namespace statistics {

QString Report::lastDayStatement() const
{
    return QStringLiteral("SELECT MAX(OrdM_Date) AS LastDay FROM tPSOrderMaster WHERE OrdM_Date <= '[TO]'");
}

Sheet Report::sheet(int view) const
{
    Sheet sheet = makeSheet(view);
    if (holdsUnknown(sheet))
        sheet.remark =
            QStringLiteral("'?'는 가져올 수 없거나 너무 커서 계산하지 못한 값입니다. 해당 내역을 확인하십시오.   ")
            + sheet.remark;
    return sheet;
}

} // namespace statistics
