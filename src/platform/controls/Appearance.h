#pragma once

#include <QColor>
#include <QFont>
#include <QWidget>

namespace controls {

/// System colours by their number, as the desktop's own palette gives them.
enum class SystemColor : int {
    ActiveCaption = 2,
    Window = 5,
    CaptionText = 9,
    InactiveBorder = 11,
    ButtonFace = 15,
    ButtonText = 18,
    InfoBackground = 24,
};
QColor systemColor(SystemColor color);
/// The grey of a locked field.
inline const QColor LockedColor{0xEF, 0xEF, 0xEF};
/// The blue of the button that goes on and, on the desk, of what is selected, under white letters.
inline const QColor AccentColor{0x1F, 0x6F, 0xB2};

/// Money that a customer owes.
inline const QColor OwedColor{0xB3, 0x26, 0x1E};

/// Back colour of an entry control: the base of text boxes and lists, the background of boxes and options.
void setBackColor(QWidget *control, const QColor &color);
QColor backColor(const QWidget *control);
void setForeColor(QWidget *control, const QColor &color);
QColor foreColor(const QWidget *control);

/// Stands a free Korean font in for those named by the system's forms where they are not installed. Once per process.
void installKoreanFonts();
/// Font of all windows.
QFont deskFont();
/// Whether the font draws the backslash as the won sign; false means that amounts would show a slash.
bool showsWonSign(const QFont &font);

} // namespace controls
