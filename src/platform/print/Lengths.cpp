#include "platform/print/Lengths.h"

#include "platform/runtime/RuntimeError.h"

namespace print {

double length(const QString &text)
{
    const bool centimetres = text.endsWith(QLatin1String("cm"));
    bool ok = false;
    const double number = text.chopped(qMin<qsizetype>(2, text.size())).toDouble(&ok);
    if (!ok || (!centimetres && !text.endsWith(QLatin1String("mm"))))
        throw runtime::RuntimeError(runtime::ErrorNumber::InvalidCall,
                                    QStringLiteral("길이를 읽을 수 없습니다: '%1'").arg(text));
    return centimetres ? number * 10 : number;
}

} // namespace print
