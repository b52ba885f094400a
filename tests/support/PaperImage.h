#pragma once

#include "platform/print/Document.h"

#include <QImage>
#include <QList>

/// The sheets of a job as a print head puts them on paper: black or white, 203 dots to the inch.
QList<QImage> printedSheets(const QString &pdf);

/// Texts of the document, with their sheet, whose letters do not stand on the sheets where the document has them.
QStringList textsMissingOn(const QList<QImage> &sheets, const print::Document &document);
