#pragma once

#include "platform/print/Document.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace print {

/// Device names of the system's printers, in the system's order; empty where there is no printing system.
QStringList printerNames();
/// The system's default printer, else its first; empty when there is none.
QString defaultPrinter();
/// Whether the device is a file, written in a printer's place.
bool isFile(const QString &device);
/// Whether the system has a printer of this name now.
bool isPrinter(const QString &name);
/// Size of a printer's page as it is set up, mm. Raises InvalidCall when the printer cannot tell it.
QSizeF pageSize(const QString &printer);

/// Is told each page that was drawn, from 1; false stops.
using Progress = std::function<bool(int page)>;

/// Prints all pages on a printer (the default one for an empty name). A name that ends in ".pdf" is a file, written in the
/// printer's place. Raises InvalidCall with a text for the user when there is no such printer, it has no paper of this
/// size or the job is not taken. Whether it went there: a job that was stopped leaves nothing on paper.
bool send(const Document &document, const QString &device, const QString &title, const Progress &progress = {});
/// Writes all pages as a PDF file; one that was stopped leaves the file as it was. Raises InvalidCall when the file cannot
/// be written.
bool savePdf(const Document &document, const QString &file, const QString &title, const Progress &progress = {});

} // namespace print
