#pragma once

#include "platform/ado/Connection.h"

#include <QTimer>

#include <chrono>

namespace journal {

/// Seals the journal a few seconds after this desk has written, its own rows and whatever others left, while it has nothing
/// else to do. A desk that may not, or that meets another at it, leaves them to the next.
class Sealing : public QObject
{
public:
    explicit Sealing(const ado::ConnectionPtr &connection, std::chrono::milliseconds pause = std::chrono::seconds(3));

private:
    void sealWritten();

    ado::ConnectionPtr connection_;
    quint64 seen_;
    QTimer timer_;
};

} // namespace journal
