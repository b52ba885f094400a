#pragma once

#include "platform/ado/LentDatabase.h"
#include "platform/ado/OdbcDriver.h"

namespace ado {

/// ODBC in a session of the host's. It is told how texts are read, and to give up waiting for a lock; neither outlasts the
/// session.
class LentOdbcDriver : public OdbcDriver
{
public:
    explicit LentOdbcDriver(const LentDatabase &lent);

    bool isLent() const override { return true; }
    bool alive(Asking asking) override;

protected:
    QSqlDatabase database() const override { return lent_.database(); }
    void openSession() override;
    void closeSession() override;
    void leave() override {}

private:
    /// Raises ConnectionLost where a statement that fails takes the whole transaction along: the host's would go with it.
    void requireStatementsToFailAlone();
    /// Whether it is the session that was set up here, which bears a mark.
    bool isMarked() const;

    const LentDatabase lent_;
};

} // namespace ado
