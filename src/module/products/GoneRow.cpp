#include "products/GoneRow.h"

#include "platform/runtime/Attempt.h"

using runtime::ErrorNumber;
using runtime::RuntimeError;

bool isConflict(const RuntimeError &error)
{
    return error.number() == ErrorNumber::Conflict;
}

QString leaveGoneRow(ado::Recordset &rows, const QString &kind)
{
    rows.moveTo(rows.rowCount());
    runtime::Attempt attempt;
    attempt([&] { rows.requeryAt({}); });
    return QStringLiteral("다른 데스크에서 먼저 삭제한 %1입니다. ").arg(kind)
        + (attempt.failed() ? QStringLiteral("목록은 새로 가져오지 못했습니다.") : QStringLiteral("목록을 새로 가져왔습니다."));
}
