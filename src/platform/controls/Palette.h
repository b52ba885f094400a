#pragma once

#include <QColor>
#include <QPalette>

namespace controls {

/// The one table of colours: every colour on the screen comes from here, by what it is for.

enum class Scheme { Light, Dark };
/// Dark where the desktop's windows are darker than their texts.
Scheme scheme();

/// A background and the text that belongs to it. A text reaches 4.5 : 1 on its background.
enum class Ground {
    Face,             ///< windows and buttons
    Field,            ///< what can be typed into; lists
    Stripe,           ///< every other row of a list
    Locked,           ///< what cannot be typed into
    OutOfReach,       ///< of a pane that is shut while another one is in edit
    Needed,           ///< must be filled
    Reckoned,         ///< follows from what is typed beside it
    RestingSelection, ///< the row of a list that has not the focus
    Hit,              ///< what a search has found
    PaleAmber,        ///< a field that stands beside an amber button
    PaleRed,
    Tip,
    Accent, ///< the button that goes on, what is selected
    Amber,  ///< the button goes on, but look at what it does
    Red,    ///< the same, and harder
    Paper,  ///< the same on every desktop
    Count
};
struct GroundColors
{
    QColor back;
    QColor text;
};
GroundColors colors(Ground ground, Scheme of = scheme());
/// Calm grounds bear each ink.
bool isCalm(Ground ground);

/// Text of a colour of its own, readable on each calm ground.
enum class Ink {
    Plain,
    Faint, ///< zeros and what stands in an empty box
    Negative,
    Owed, ///< money that a customer owes
    Count
};
QColor ink(Ink ink, Scheme of = scheme());
/// Of a control that cannot be used; it needs not be readable, but seen.
QColor disabledText(Scheme of = scheme());

/// The frame about what has the focus, at 3 : 1 on that background.
QColor focusFrame(const QColor &back);
/// The line about controls that belong together.
QColor groupLine(Scheme of = scheme());
/// The handle of a scroll bar, at 3 : 1 on a face.
QColor scrollHandle(Scheme of = scheme());
/// Lines of a chart's scale.
QColor chartScale(Scheme of = scheme());
/// Series of a chart, at 3 : 1 on a field; they come again after the last one.
inline constexpr std::size_t seriesCount = 6;
QColor seriesColor(std::size_t series, Scheme of = scheme());

/// By WCAG 2: from 1 to 21.
double contrast(const QColor &one, const QColor &other);

/// The colours of a whole program.
QPalette deskPalette(Scheme of);

} // namespace controls
