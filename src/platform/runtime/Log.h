#pragma once

#include "platform/runtime/Place.h"

#include <QLoggingCategory>
#include <QString>

namespace runtime {

Q_DECLARE_LOGGING_CATEGORY(databaseLog) ///< "zelvo.database": what a server refused, or was not there for
Q_DECLARE_LOGGING_CATEGORY(programLog)  ///< "zelvo.program": everything else

/// Both categories are silent, so that a host's own output stays its own, until this is called or a log is kept.
void sayErrors();

/// Belongs into every catch that ends an error: writes a line of the error in flight to the log, unless one stands there by
/// now. It tells the error's numbers, the operations with their keys and the places in the source, but neither the text
/// that the user sees nor what the server quotes. Whoever throws the error on leaves the line to the one that ends it.
void trapped(Place place = Place::here());

/// Whose log is kept.
struct LogOwner
{
    QString product; ///< folder below the user's state folder and first word of the files' names
    QString version;
    QString database; ///< as ado::addressToShow gives it
};

/// Keeps what this process says in the categories above in a file of the user: one for each day and machine, fourteen days
/// long. Every other message goes to the message handler that was there before; so do these where no file can be written,
/// which standard error is told once.
void keepLog(const LogOwner &owner);
/// The product's folder of such files.
QString logFolder(const QString &product);
/// Today's file, whether it is there or not.
QString logFile(const QString &product);

} // namespace runtime
