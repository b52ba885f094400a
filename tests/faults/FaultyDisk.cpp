#include "tests/faults/FaultyDisk.h"

#include <sqlite3.h>

#include <map>

namespace faults {

namespace {

struct State
{
    Fault fault{};
    int nth = 0; ///< 0: none is to come
    bool lasting = false;
    Calls calls{};
    std::vector<Deed> *deeds = nullptr;
} state;

sqlite3_vfs *theReal = nullptr;

/// SQLITE_OK, or what this call is to fail with.
int fateOf(Call call)
{
    const int number = ++state.calls[std::size_t(call)];
    const bool fails =
        state.nth > 0 && call == state.fault.call && (state.lasting ? number >= state.nth : number == state.nth);
    return fails ? state.fault.code : SQLITE_OK;
}

/// An open file of the engine's own, some of whose methods are exchanged.
struct Open
{
    QString name;
    const sqlite3_io_methods *real;
    sqlite3_io_methods exchanged;
};
std::map<sqlite3_file *, Open> opened;

void note(sqlite3_file *file, Deed::Kind kind, qint64 at = 0, const QByteArray &bytes = {})
{
    if (state.deeds)
        state.deeds->push_back({kind, opened.at(file).name, at, bytes});
}

int closeFile(sqlite3_file *file)
{
    return opened.extract(file).mapped().real->xClose(file);
}

int readFile(sqlite3_file *file, void *to, int length, sqlite3_int64 at)
{
    const int fate = fateOf(Call::Read);
    return fate ? fate : opened.at(file).real->xRead(file, to, length, at);
}

int writeFile(sqlite3_file *file, const void *from, int length, sqlite3_int64 at)
{
    const int fate = fateOf(Call::Write);
    if (fate) // a full disk takes what it can
        length /= 2;
    note(file, Deed::Write, at, QByteArray(static_cast<const char *>(from), length));
    const int code = opened.at(file).real->xWrite(file, from, length, at);
    return fate ? fate : code;
}

int truncateFile(sqlite3_file *file, sqlite3_int64 size)
{
    if (const int fate = fateOf(Call::Truncate))
        return fate;
    note(file, Deed::Truncate, size);
    return opened.at(file).real->xTruncate(file, size);
}

/// The machine goes on running, so nothing needs to reach its disk.
int syncFile(sqlite3_file *file, int)
{
    const int fate = fateOf(Call::Sync);
    if (!fate)
        note(file, Deed::Sync);
    return fate;
}

int lockFile(sqlite3_file *file, int level)
{
    const int fate = fateOf(Call::Lock);
    return fate ? fate : opened.at(file).real->xLock(file, level);
}

int lockShared(sqlite3_file *file, int offset, int count, int flags)
{
    const int fate = (flags & SQLITE_SHM_LOCK) ? fateOf(Call::Lock) : SQLITE_OK;
    return fate ? fate : opened.at(file).real->xShmLock(file, offset, count, flags);
}

int openFile(sqlite3_vfs *, sqlite3_filename name, sqlite3_file *file, int flags, int *flagsGiven)
{
    int code = fateOf(Call::Open);
    file->pMethods = nullptr; // the engine does not close what has none
    if (!code)
        code = theReal->xOpen(theReal, name, file, flags, flagsGiven);
    if (code || !file->pMethods)
        return code;
    Open &made = opened[file] = {QString::fromUtf8(name), file->pMethods, *file->pMethods};
    made.exchanged.iVersion = 2; // nothing is mapped past the methods for reading and writing
    made.exchanged.xClose = closeFile;
    made.exchanged.xRead = readFile;
    made.exchanged.xWrite = writeFile;
    made.exchanged.xTruncate = truncateFile;
    made.exchanged.xSync = syncFile;
    made.exchanged.xLock = lockFile;
    made.exchanged.xShmLock = lockShared;
    file->pMethods = &made.exchanged;
    return code;
}

int deleteFile(sqlite3_vfs *, const char *name, int syncFolder)
{
    if (state.deeds)
        state.deeds->push_back({Deed::Delete, QString::fromUtf8(name), 0, {}});
    return theReal->xDelete(theReal, name, syncFolder);
}

[[maybe_unused]] const bool installed = [] {
    theReal = sqlite3_vfs_find(nullptr);
    static sqlite3_vfs faulty = *theReal;
    faulty.zName = "faulty";
    faulty.pNext = nullptr;
    faulty.xOpen = openFile;
    faulty.xDelete = deleteFile;
    return sqlite3_vfs_register(&faulty, 1) == SQLITE_OK;
}();

} // namespace

void breakAt(const Fault &fault, int nth, bool lasting)
{
    state = {fault, nth, lasting, {}, state.deeds};
}

void repair()
{
    breakAt({}, 0, false);
}

const Calls &calls()
{
    return state.calls;
}

void record(std::vector<Deed> *deeds)
{
    state.deeds = deeds;
}

} // namespace faults
