#pragma once

#include "platform/runtime/Currency.h"

#include <QVariant>

#include <cstdint>

/// Conversions with the rules of the desktop that the clinic's programs were written for. A column value is a
/// QVariant: invalid for NULL, int, bool (flag), runtime::Currency, double, QDate, QDateTime or QString.
/// Those that cannot convert raise TypeMismatch (NULL: InvalidUseOfNull), those that do not fit Overflow.
namespace runtime {

/// The value joined to an empty text: NULL gives "", a date its default text, a flag "True" or "False".
QString text(const QVariant &value);
/// True for NULL.
bool isNull(const QVariant &value);
/// The flag reading: NULL false, a number true when it is not 0.
bool isTrue(const QVariant &value);

/// Without the blanks at both ends. Tabs, line breaks and the ideographic blank are letters that somebody typed; they stay.
QString Trim(const QString &text);

/// The numeric prefix of a text, blanks passed over: Val("12 원") is 12, Val("1,000") is 1, Val("") is 0. Raises Overflow
/// for one that no double holds.
double Val(const QString &text);
double Val(const QVariant &value);

/// Whether CDbl would take the text; the won sign, commas and blanks around are accepted, "" is not numeric.
bool IsNumeric(const QString &text);

Currency CCur(const QVariant &value);
double CDbl(const QVariant &value);
qint32 CLng(const QVariant &value); ///< rounds half to even
qint16 CInt(const QVariant &value); ///< rounds half to even

/// 32-bit and 16-bit narrowing of whole numbers; raise Overflow.
qint32 toLong(std::int64_t value);
qint16 toInteger(std::int64_t value);

/// Default text of a number: single precision with 7 significant digits, double with 15.
QString text(float value);
QString text(double value);

} // namespace runtime
