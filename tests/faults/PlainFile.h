#pragma once

#include <QByteArray>
#include <QString>

/// What stands in a database file, read past the faulty layer by a connection of its own: every row of every table, with
/// the counters of the keys. Begins with "DAMAGED" when the file is not sound.
QByteArray standOf(const QString &file);
