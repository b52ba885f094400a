#pragma once

#include <QString>
#include <QWidget>

namespace controls {

/// Gives a control its name, an array's element with its index ("txtOrderMaster_7"), and returns it.
template <typename Control>
Control *named(Control *control, const QString &name, int index = -1)
{
    control->setObjectName(index < 0 ? name : QStringLiteral("%1_%2").arg(name).arg(index));
    return control;
}

/// Text of a caption in which '&' stands for itself.
inline QString literalCaption(QString text)
{
    return text.replace(QLatin1Char('&'), QStringLiteral("&&"));
}

} // namespace controls
