#pragma once

#include "platform/print/Document.h"

#include <QImage>
#include <QList>

/// The sheets of a job at 203 dots to the inch. What a print head is given begins at the edge (points) that it leaves free.
QList<QImage> printedSheets(const QString &pdf, double edge = 0);

/// Texts of the document, with their sheet, whose letters do not stand on the sheets where the document has them.
QStringList textsMissingOn(const QList<QImage> &sheets, const print::Document &document);
