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

/// Whose rows come back.
enum class Scope {
    Sales, ///< the sale module's seven tables
    All,   ///< the host's three as well
};

struct Restored
{
    QString safetyCopy;     ///< what was there before, in a file beside the backup; empty when there was no clinic yet
    bool wholeFile = false; ///< too damaged to take rows, a file was replaced with all that lay in it
};

/// Makes the clinic's rows those of a file of backUp, in one step that the desks see whole or not at all. The file is looked
/// through before anything is touched. Tables, columns and rows of other programs stay as they are. Where there is no clinic
/// yet, it comes with all ten tables.
Restored restore(const QString &address, const QString &file, const Progress &progress = {},
                 Scope scope = Scope::Sales);

/// Whether a backup is one of a server's clinic.
bool isOfServer(const QString &file);

/// The same on the terminal, with a line that counts. The program's exit status: 0 done, 1 stopped by Ctrl+C.
int backUpOnTerminal(const QString &address, const QString &file);
int restoreOnTerminal(const QString &address, const QString &file, Scope scope);

} // namespace backup
