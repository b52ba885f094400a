#include "forms/clsMyFunctions.h"

#include "forms/MemoBox.h"
#include "platform/controls/Appearance.h"
#include "platform/controls/Stepper.h"
#include "platform/controls/Wheel.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDateEdit>
#include <QLineEdit>
#include <QListView>
#include <QPlainTextEdit>
#include <QStyle>

namespace {

constexpr char readOnlyMark[] = "staysReadOnly";

// A read-only box goes without its frame, so that it is told from an open one whatever its back colour, and Tab passes it
// over: it takes the focus by a click, to be copied from. Its text stays where it was.
void setReadOnly(QWidget *textBox, bool readOnly)
{
    textBox->setFocusPolicy(readOnly ? Qt::ClickFocus : Qt::StrongFocus);
    if (auto *line = qobject_cast<QLineEdit *>(textBox)) {
        line->setReadOnly(readOnly);
        const int frame = line->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, line);
        line->setFrame(!readOnly);
        line->setTextMargins(readOnly ? frame : 0, 0, readOnly ? frame : 0, 0);
    } else if (auto *memo = qobject_cast<QPlainTextEdit *>(textBox)) {
        memo->setReadOnly(readOnly);
        memo->setFrameShape(readOnly ? QFrame::NoFrame : QFrame::StyledPanel);
    }
}

bool isTextBox(const QWidget *control)
{
    return qobject_cast<const QLineEdit *>(control) || qobject_cast<const QPlainTextEdit *>(control);
}

bool isList(const QWidget *control)
{
    return qobject_cast<const QComboBox *>(control) || qobject_cast<const QListView *>(control);
}

bool isSwitch(const QWidget *control)
{
    return qobject_cast<const QAbstractButton *>(control) || qobject_cast<const QDateEdit *>(control)
           || qobject_cast<const controls::Stepper *>(control);
}

} // namespace

clsMyFunctions::clsMyFunctions(QObject *parent)
    : QObject(parent)
{
}

void clsMyFunctions::setCollection2Locked(const ControlGroup &objCol, bool bCtrlLocked) const
{
    for (QWidget *control : objCol) {
        const bool textBox = isTextBox(control);
        const bool list = isList(control);
        if (bCtrlLocked && (textBox || list))
            controls::setGround(control, controls::Ground::Locked);
        if (textBox)
            setReadOnly(control, bCtrlLocked || control->property(readOnlyMark).toBool());
        else if (list || isSwitch(control))
            control->setEnabled(!bCtrlLocked);
        controls::lockWheel(control, bCtrlLocked); // also where a pane enables the control again
    }
}

void clsMyFunctions::resetCollection(const ControlGroup &objCol) const
{
    for (QWidget *control : objCol) {
        if (auto *line = qobject_cast<QLineEdit *>(control))
            line->clear();
        else if (auto *memo = qobject_cast<MemoBox *>(control))
            memo->setText(QString());
    }
}

void clsMyFunctions::keepReadOnly(QWidget *textBox)
{
    textBox->setProperty(readOnlyMark, true);
    setReadOnly(textBox, true);
}
