#pragma once

#include <QString>

#include <optional>

namespace runtime {

/// A number text taken apart: plain digits with an optional point and exponent, as QString::toDouble reads them.
/// Won sign, commas and blanks around are passed over; nothing when the whole text is no number.
std::optional<QString> plainNumber(const QString &text);

/// The longest numeric prefix in that form, blanks inside passed over; "0" when there is none.
QString numericPrefix(const QString &text);

} // namespace runtime
