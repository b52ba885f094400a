#include "money/LedgerTexts.h"

#include "data/Codes.h"
#include "platform/runtime/Conversions.h"

#include <algorithm>

namespace ledger {

QString kindText(const QVariant &stored)
{
    const qint32 number = runtime::isNull(stored) ? NoOperator : runtime::CLng(stored);
    const bool known = std::ranges::find(operators, number) != operators.end();
    return known ? operatorText(Operator(number)) : runtime::text(stored);
}

QString methodText(const QVariant &stored)
{
    const QString code = runtime::text(stored);
    const auto known = std::ranges::find(methods, code, &Method::stored);
    return known != methods.end() ? QString::fromUtf16(known->text) : code;
}

} // namespace ledger
