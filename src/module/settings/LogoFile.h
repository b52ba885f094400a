#pragma once

#include <QImage>
#include <QString>

/// The picture that stands on the receipts, whatever its kind: "RcptLog.dat" of the program folder.
QString logoFile();
/// Null when the file is missing or holds no picture that can be read.
QImage readLogo(const QString &file);
