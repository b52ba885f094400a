#pragma once

#include <QString>

/// All places and sizes on paper are millimetres from the upper left corner of the sheet.
namespace print {

inline constexpr double mmPerInch = 25.4;
inline constexpr double twipsPerInch = 1440;
inline constexpr double pointsPerInch = 72;

inline constexpr double fromTwips(double twips)
{
    return twips * mmPerInch / twipsPerInch;
}
inline constexpr double toTwips(double mm)
{
    return mm * twipsPerInch / mmPerInch;
}

/// "2.9cm" and "8mm" in millimetres. Raises InvalidCall for anything else.
double length(const QString &text);

} // namespace print
