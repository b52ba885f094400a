#pragma once

#include <QString>

#include <functional>

/// A clinic's database into a file and back, while desks are at work on it. Everything raises RuntimeError with a text for
/// the technician, also when the progress function stopped the work; what was begun is then undone.
namespace backup {

/// Told now and then; answering false stops the work. May be empty.
using Progress = std::function<bool(qint64 done, qint64 total)>;

/// Copies the clinic at the address, as it is at one moment, into a new file. The file has its name only once it is whole
/// and was looked through; one that is there already is never replaced.
void backUp(const QString &address, const QString &file, const Progress &progress = {});

/// Puts a file of backUp in the place of the clinic's rows, in one step that the desks see whole or not at all. The file is
/// looked through before anything is touched. What was there before is kept in a file beside it, whose name is returned; it
/// is empty when there was no clinic at the address yet.
QString restore(const QString &address, const QString &file, const Progress &progress = {});

/// Whether a backup is one of a server's clinic.
bool isOfServer(const QString &file);

/// The same on the terminal, with a line that counts. The program's exit status: 0 done, 1 stopped by Ctrl+C.
int backUpOnTerminal(const QString &address, const QString &file);
int restoreOnTerminal(const QString &address, const QString &file);

} // namespace backup
