#include "money/SinglePrecision.h"

#include "platform/runtime/Conversions.h"
#include "platform/runtime/Format.h"

namespace singlePrecision {

float read(const QString &text)
{
    return static_cast<float>(runtime::Val(QString(text).remove(u',')));
}

QString write(float amount)
{
    return runtime::text(amount);
}

QString grouped(float amount)
{
    return runtime::Format(runtime::Val(write(amount)), QStringLiteral("##,##0"));
}

float cutOf(float amount, int cutEntry)
{
    constexpr qint32 units[] = {1, 10, 100, 1000};
    if (cutEntry < 1) // "없음", or the list is not filled yet
        return 0;
    return static_cast<float>(runtime::CLng(double(amount)) % units[cutEntry]);
}

float percentOf(float amount, qint32 percent)
{
    return static_cast<float>(runtime::CLng(double(amount * float(percent) / 100.0f)));
}

} // namespace singlePrecision
