#include "forms/KeyHint.h"

#include <QVariant>

namespace {

constexpr char whatMark[] = "hint";
constexpr char keysMark[] = "hintKeys";

void show(QWidget *control)
{
    const QString what = control->property(whatMark).toString();
    const QString keys = control->property(keysMark).toString();
    control->setToolTip(keys.isEmpty() ? what : what + QStringLiteral(" (%1)").arg(keys));
    control->setAccessibleDescription(keys.isEmpty() ? QString() : QStringLiteral("단축키 ") + keys);
}

} // namespace

void setHint(QWidget *control, const QString &what)
{
    control->setProperty(whatMark, what);
    show(control);
}

void setKeyHint(QWidget *control, const QString &keys)
{
    control->setProperty(keysMark, keys);
    show(control);
}

void setHintIfNone(QWidget *control, const QString &what)
{
    if (control->property(whatMark).toString().isEmpty())
        setHint(control, what);
}
