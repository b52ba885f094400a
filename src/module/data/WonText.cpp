#include "data/WonText.h"

#include "platform/runtime/Format.h"

QString wonText(runtime::Currency amount)
{
    return runtime::money(amount).replace(u'\\', u'₩');
}
