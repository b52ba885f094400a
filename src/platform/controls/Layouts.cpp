#include "platform/controls/Layouts.h"

#include <QCoreApplication>
#include <QEvent>

namespace controls {

void endLayouts()
{
    constexpr int levels = 12; // of controls within another, with some to spare; each call goes up one
    for (int level = 0; level < levels; ++level)
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
}

} // namespace controls
