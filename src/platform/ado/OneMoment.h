#pragma once

#include "platform/ado/Connection.h"

namespace ado {

/// As long as this stands, what is read of an embedded engine is read at one moment and for one lock. A writing ends it. Not to
/// be kept where events run.
class OneMoment
{
public:
    explicit OneMoment(ConnectionPtr connection);
    ~OneMoment();
    OneMoment(const OneMoment &) = delete;
    OneMoment &operator=(const OneMoment &) = delete;

    /// Whether the engine is one where that saves anything, and not within another.
    bool isHeld() const { return connection_ != nullptr; }

private:
    ConnectionPtr connection_; ///< null where none is held
};

} // namespace ado
