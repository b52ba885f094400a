#pragma once

class QEvent;
class QWidget;

namespace controls {

/// Hands the news that a window comes to the front or is left on to its controls, and tells whether it did. The toolkit paints
/// the whole window anew for it, since its palette has another colour for what is selected in a window behind: with each dialog
/// and box that opens. In the desk's own style only what may show such a colour need hear of it, and what is `foreign`: made by
/// others, who may draw what they like.
bool handOnActivity(QWidget &window, QEvent &event, const QWidget *foreign = nullptr);

} // namespace controls
