#pragma once

#include <QHash>
#include <QStringList>
#include <QWidget>

/// What is wrong with how a window lies, told from its controls: texts that are cut, controls over one another or outside of
/// what holds them, captions and buttons out of line. One line each.
QStringList layoutFaults(QWidget *window);
/// Where every control stands that shows.
QHash<QString, QRect> placesOf(QWidget *window);
