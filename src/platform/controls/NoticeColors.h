#pragma once

#include <QColor>
#include <QWidget>

namespace controls {

/// A background and the text upon it, always set together. The text reaches 4.5:1 on it.
struct ColorPair
{
    QColor back;
    QColor text;
};

/// Something that is not the usual thing.
inline const ColorPair AmberColors{QColor(0xFF, 0xC1, 0x07), QColor(0x1F, 0x16, 0x00)};
/// Something that takes away.
inline const ColorPair RedColors{QColor(0xB3, 0x26, 0x1E), Qt::white};
/// The button that goes on.
inline const ColorPair AccentColors{QColor(0x1F, 0x6F, 0xB2), Qt::white};
/// Text that warns, on any light background; money owed.
inline const QColor WarningTextColor{0xB3, 0x26, 0x1E};

/// Of a text box or a button that is enabled; a disabled one keeps the grey of its text.
void setColors(QWidget *control, const ColorPair &colors);

} // namespace controls
