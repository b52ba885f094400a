#pragma once

#include <QString>
#include <QWidget>

/// What a control does and the key that does it stand in its tooltip, the key in its accessible description as well; its
/// caption says neither. Both are set by themselves, in any order.
void setHint(QWidget *control, const QString &what);
void setKeyHint(QWidget *control, const QString &keys);
/// As setHint(), where nobody has said it yet.
void setHintIfNone(QWidget *control, const QString &what);
