#include "desk/journal/Sealing.h"

#include "desk/journal/Seal.h"
#include "desk/schema/Journal.h"
#include "platform/controls/EventEdge.h"
#include "platform/runtime/Log.h"
#include "platform/runtime/RuntimeError.h"

namespace journal {

/// One that starts looks for what was left before.
Sealing::Sealing(const ado::ConnectionPtr &connection, std::chrono::milliseconds pause)
    : connection_(connection)
    , seen_(connection->writes() - 1)
{
    connect(&timer_, &QTimer::timeout, this, &Sealing::sealWritten);
    timer_.start(pause);
}

void Sealing::sealWritten()
{
    if (connection_->writes() == seen_ || connection_->inTransaction())
        return;
    // As an event of its own, so that a server that is gone does not hold the windows.
    controls::runEvent([this] {
        try {
            const bool all = sealSome(*connection_) < schema::SealedAtOnce;
            seen_ = connection_->writes() - (all ? 0 : 1);
        } catch (const runtime::RuntimeError &) {
            runtime::trapped();
            seen_ = connection_->writes();
        }
    });
}

} // namespace journal
