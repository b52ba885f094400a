#include "products/GoneRow.h"

using runtime::ErrorNumber;
using runtime::RuntimeError;

bool isConflict(const RuntimeError &error)
{
    return error.number() == ErrorNumber::Conflict;
}

QString leaveGoneRow(BoundList &list, const QString &kind)
{
    const bool readAnew = list.leaveRow();
    return QStringLiteral("다른 데스크에서 먼저 삭제한 %1입니다. ").arg(kind)
           + (readAnew ? QStringLiteral("목록을 새로 가져왔습니다.")
                       : QStringLiteral("목록은 새로 가져오지 못했습니다."));
}
