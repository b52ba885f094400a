#include "platform/controls/NoticeColors.h"

#include "platform/controls/Appearance.h"

#include <QPalette>
#include <QPushButton>

namespace controls {

void setColors(QWidget *control, const ColorPair &colors)
{
    if (qobject_cast<QPushButton *>(control)) {
        // A disabled button keeps its face.
        QPalette palette = control->palette();
        for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive})
            palette.setColor(group, QPalette::Button, colors.back);
        control->setPalette(palette);
    } else {
        setBackColor(control, colors.back);
    }
    setForeColor(control, colors.text);
}

} // namespace controls
