#pragma once

#include <QLineEdit>

namespace controls {

/// Puts a text into a box so that a long one shows its beginning; the whole stands in the tooltip.
inline void showText(QLineEdit *box, const QString &text)
{
    box->setText(text);
    box->setCursorPosition(0);
    box->setToolTip(text.toHtmlEscaped());
}

} // namespace controls
