#pragma once

#include "platform/print/Page.h"

namespace print {

/// The text as its font can show it, on one line: a visible box stands for what no font has a picture of, an emoji of
/// several signs included, and a blank for a line's end.
QString shownText(const QString &text, const TextFont &font);

} // namespace print
