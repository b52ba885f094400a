#pragma once

#include "platform/runtime/Currency.h"

#include <QDate>
#include <QDateTime>
#include <QString>
#include <QVariant>

namespace runtime {

/// All money on the sale window: "\1,234" and "-\1,234". The backslash is the won sign of Korean fonts.
inline const QString strMoneyFormat = QStringLiteral("\\\\###,###,##0;-\\\\###,###,##0");

/// Formats a number or a numeric text by a pattern of '#', '0', ',', '.', an escaped character ("\\\\" in a pattern
/// text is one won sign) and an optional second section for negative numbers; "Currency" is the won sign with grouping.
/// Rounds half away from zero. NULL or an empty text gives an empty text; a text that is no number comes back as it is.
/// A date with a pattern of y, m and d gives that date text.
QString Format(const QVariant &value, const QString &pattern);

/// Format with strMoneyFormat.
QString money(Currency amount);

/// "2026-11-24", whatever the machine's locale.
QString dateText(const QDate &date);
/// "2026-11-24 오후 3:05:09"; midnight gives the date alone.
QString dateTimeText(const QDateTime &moment);

} // namespace runtime
