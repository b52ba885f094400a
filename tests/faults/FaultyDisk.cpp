#include "tests/faults/FaultyDisk.h"

#include <sqlite3.h>

#include <array>
#include <new>

namespace faults {

namespace {

struct State
{
    Fault fault{};
    int nth = 0; ///< 0: none is to come
    bool struck = false;
    std::array<int, 6> calls{};
    std::vector<Deed> *deeds = nullptr;
} state;

sqlite3_vfs *theReal = nullptr;

/// SQLITE_OK, or what this call is to fail with.
int fateOf(Call call)
{
    const int number = ++state.calls[std::size_t(call)];
    if (state.nth == 0 || call != state.fault.call || number < state.nth
        || (number > state.nth && !state.fault.lasting))
        return SQLITE_OK;
    state.struck = true;
    return state.fault.code;
}

/// The engine's own file lies behind it in memory.
struct File : sqlite3_file
{
    QString name;

    static sqlite3_file *real(sqlite3_file *file)
    {
        return reinterpret_cast<sqlite3_file *>(static_cast<File *>(file) + 1);
    }
};

void note(sqlite3_file *file, Deed::Kind kind, qint64 at = 0, const QByteArray &bytes = {})
{
    if (state.deeds)
        state.deeds->push_back({kind, static_cast<File *>(file)->name, at, bytes});
}

template <auto Method, typename... Arguments>
auto onReal(sqlite3_file *file, Arguments... arguments)
{
    sqlite3_file *const real = File::real(file);
    return (real->pMethods->*Method)(real, arguments...);
}

int closeFile(sqlite3_file *file)
{
    const int code = onReal<&sqlite3_io_methods::xClose>(file);
    static_cast<File *>(file)->~File();
    return code;
}

int readFile(sqlite3_file *file, void *to, int length, sqlite3_int64 at)
{
    const int fate = fateOf(Call::Read);
    return fate ? fate : onReal<&sqlite3_io_methods::xRead>(file, to, length, at);
}

int writeFile(sqlite3_file *file, const void *from, int length, sqlite3_int64 at)
{
    const int fate = fateOf(Call::Write);
    if (fate) // a full disk takes what it can
        length /= 2;
    note(file, Deed::Write, at, QByteArray(static_cast<const char *>(from), length));
    const int code = onReal<&sqlite3_io_methods::xWrite>(file, from, length, at);
    return fate ? fate : code;
}

int truncateFile(sqlite3_file *file, sqlite3_int64 size)
{
    if (const int fate = fateOf(Call::Truncate))
        return fate;
    note(file, Deed::Truncate, size);
    return onReal<&sqlite3_io_methods::xTruncate>(file, size);
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
    return fate ? fate : onReal<&sqlite3_io_methods::xLock>(file, level);
}

int lockShared(sqlite3_file *file, int offset, int count, int flags)
{
    const int fate = (flags & SQLITE_SHM_LOCK) ? fateOf(Call::Lock) : SQLITE_OK;
    return fate ? fate : onReal<&sqlite3_io_methods::xShmLock>(file, offset, count, flags);
}

using Methods = sqlite3_io_methods;
const Methods methods{
    2,
    closeFile,
    readFile,
    writeFile,
    truncateFile,
    syncFile,
    [](sqlite3_file *file, sqlite3_int64 *size) { return onReal<&Methods::xFileSize>(file, size); },
    lockFile,
    [](sqlite3_file *file, int level) { return onReal<&Methods::xUnlock>(file, level); },
    [](sqlite3_file *file, int *out) { return onReal<&Methods::xCheckReservedLock>(file, out); },
    [](sqlite3_file *file, int op, void *with) { return onReal<&Methods::xFileControl>(file, op, with); },
    [](sqlite3_file *file) { return onReal<&Methods::xSectorSize>(file); },
    [](sqlite3_file *file) { return onReal<&Methods::xDeviceCharacteristics>(file); },
    [](sqlite3_file *file, int page, int size, int extend, void volatile **at) {
        return onReal<&Methods::xShmMap>(file, page, size, extend, at);
    },
    lockShared,
    [](sqlite3_file *file) { onReal<&Methods::xShmBarrier>(file); },
    [](sqlite3_file *file, int remove) { return onReal<&Methods::xShmUnmap>(file, remove); },
    nullptr,
    nullptr,
};

int openFile(sqlite3_vfs *, sqlite3_filename name, sqlite3_file *file, int flags, int *flagsGiven)
{
    auto *const made = new (file) File{{nullptr}, QString::fromUtf8(name)};
    int code = fateOf(Call::Open);
    if (!code)
        code = theReal->xOpen(theReal, name, File::real(file), flags, flagsGiven);
    if (code)
        made->~File(); // the engine does not close what has no methods
    else
        made->pMethods = &methods;
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
    faulty.szOsFile = int(sizeof(File)) + theReal->szOsFile;
    faulty.zName = "faulty";
    faulty.pNext = nullptr;
    faulty.xOpen = openFile;
    faulty.xDelete = deleteFile;
    return sqlite3_vfs_register(&faulty, 1) == SQLITE_OK;
}();

} // namespace

void breakAt(const Fault &fault, int nth)
{
    std::vector<Deed> *const deeds = state.deeds;
    state = {fault, nth, false, {}, deeds};
}

void repair()
{
    breakAt({}, 0);
}

bool struck()
{
    return state.struck;
}

int callsOf(Call call)
{
    return state.calls[std::size_t(call)];
}

void record(std::vector<Deed> *deeds)
{
    state.deeds = deeds;
}

} // namespace faults
