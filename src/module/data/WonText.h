#pragma once

#include "platform/runtime/Currency.h"

#include <QString>

/// "₩415,000", with the won sign itself: in texts that are read, not in boxes that are read back.
QString wonText(runtime::Currency amount);
