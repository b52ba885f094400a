#include "data/WholeWon.h"

#include "platform/runtime/RuntimeError.h"

runtime::Currency wholeWon(runtime::Currency amount)
{
    if (amount.scaled() % runtime::Currency::Scale != 0)
        throw runtime::RuntimeError(runtime::ErrorNumber::TypeMismatch,
                                    QStringLiteral("1원 미만의 금액은 저장할 수 없습니다: ") + amount.toText());
    return amount;
}
