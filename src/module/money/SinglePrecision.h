#pragma once

#include <QString>

/// Amounts of the simple receipt. Quirk (docs/architecture.md): they are single precision throughout, so from eight
/// digits on the last ones are lost, in the arithmetic and in the text.
namespace singlePrecision {

/// The numeric prefix of a text, grouping commas passed over; an empty text is 0.
float read(const QString &text);
/// Plain text of seven significant digits.
QString write(float amount);
/// With grouping commas.
QString grouped(float amount);

/// What lies below the unit that the entry of the cut list names: 0 nothing, then tens, hundreds, thousands. The amount
/// is rounded half to even first; raises Overflow beyond 32 bits.
float cutOf(float amount, int cutEntry);
/// So many percent of the amount, rounded half to even to whole won.
float percentOf(float amount, qint32 percent);

} // namespace singlePrecision
