#pragma once

namespace ado {

/// What a program with windows does while a server lets it wait: one that answers late, is gone, or is being dialled anew.
/// Always on the program's thread. Of the connection that waits every statement raises InvalidCall meanwhile.
class Patience
{
public:
    Patience() = default;
    virtual ~Patience();
    Patience(const Patience &) = delete;
    Patience &operator=(const Patience &) = delete;

    /// Asked at the beginning of every wait, also the shortest: whether it may do something later on. Costs nothing.
    virtual bool mayBegin() = 0;
    /// After the first second. False: not where the program stands now, which stands still until the wait is over.
    virtual bool begin() = 0;
    /// Again and again, many times a second. False: nobody waits any longer, and the session is given up.
    virtual bool goOn() = 0;
    virtual void end() = 0;
};

/// Null, as at the beginning: the program stands still.
void setPatience(Patience *patience);

/// Whether what runs now was let in under a statement that waits: by goOn(), or as the work of a Meanwhile.
bool serverIsAwaited();

} // namespace ado
