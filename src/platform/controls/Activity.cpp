#include "platform/controls/Activity.h"

#include "platform/controls/DeskStyle.h"
#include "platform/controls/PushCheck.h"
#include "platform/controls/RecordsetGrid.h"

#include <QCoreApplication>
#include <QEvent>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QSplitter>
#include <QStackedWidget>
#include <QTabWidget>

#include <algorithm>

namespace controls {

namespace {

/// These draw nothing that is selected.
constexpr const QMetaObject *calmKinds[] = {
    &QWidget::staticMetaObject,        &QSplitter::staticMetaObject,  &QSplitterHandle::staticMetaObject,
    &QStackedWidget::staticMetaObject, &QScrollBar::staticMetaObject, &QLabel::staticMetaObject,
};

/// Whether it stays as it is: what only places others, what shows nothing selected, and a list, which shows its row as in a
/// window behind as soon as it has no focus (GridDelegate). What gets or loses the focus is painted for that.
bool isCalm(const QWidget &control)
{
    if (const auto *label = qobject_cast<const QLabel *>(&control);
        label && label->textInteractionFlags().testFlag(Qt::TextSelectableByMouse))
        return false;
    if (const auto *box = qobject_cast<const QLineEdit *>(&control))
        return !box->hasSelectedText();
    return control.layout() || std::ranges::find(calmKinds, control.metaObject()) != std::end(calmKinds)
           || qobject_cast<const QTabWidget *>(&control) || qobject_cast<const PushCheck *>(&control)
           || qobject_cast<const RecordsetGrid *>(&control) || qobject_cast<const QHeaderView *>(&control);
}

/// But for what is selected.
bool hasSameColors(const QPalette &palette)
{
    for (int number = 0; number < QPalette::NColorRoles; ++number) {
        const auto role = QPalette::ColorRole(number);
        if (role != QPalette::Highlight && role != QPalette::HighlightedText
            && palette.brush(QPalette::Active, role) != palette.brush(QPalette::Inactive, role))
            return false;
    }
    return true;
}

void handOnWithin(const QWidget &control, QEvent &event, const QWidget *foreign)
{
    // Whoever hears of it may make more. NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
    const QObjectList children = control.children();
    for (QObject *child : children) {
        auto *const inner = qobject_cast<QWidget *>(child);
        if (!inner || inner->isWindow() || !inner->isVisible())
            continue;
        if (inner != foreign && isCalm(*inner) && hasSameColors(inner->palette()))
            handOnWithin(*inner, event, foreign);
        else
            QCoreApplication::sendEvent(inner, &event);
    }
}

} // namespace

bool handOnActivity(QWidget &window, QEvent &event, const QWidget *foreign)
{
    if ((event.type() != QEvent::WindowActivate && event.type() != QEvent::WindowDeactivate)
        || !dynamic_cast<const DeskStyle *>(window.style()) || !hasSameColors(window.palette()))
        return false;
    handOnWithin(window, event, foreign);
    return true;
}

} // namespace controls
