#pragma once

#include <QByteArray>
#include <QString>

#include <array>
#include <vector>

/// A layer of the tests between the embedded engine and its files. Every database that names no layer goes over it.
namespace faults {

enum class Call { Open, Read, Write, Sync, Truncate, Lock };

struct Fault
{
    const char *name;
    Call call;
    int code; ///< what the engine is answered
};

/// The n-th call from now on fails; lasting: so do all further ones of the kind.
void breakAt(const Fault &fault, int nth, bool lasting);
/// No more do; the calls are counted anew.
void repair();

/// By their kind, since then.
using Calls = std::array<int, 6>;
const Calls &calls();

/// What was done to a file, for a disk that loses what was not synced.
struct Deed
{
    enum Kind { Write, Truncate, Sync, Delete } kind;
    QString file;
    qint64 at = 0;
    QByteArray bytes;
};

/// All that is done from now on; null ends it.
void record(std::vector<Deed> *deeds);

} // namespace faults
