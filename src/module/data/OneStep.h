#pragma once

#include "platform/ado/Transaction.h"

#include <optional>

/// Work in the open transaction, which is saved by whoever began it, else in one of its own, which any other end than these
/// undoes.
class OneStep
{
public:
    explicit OneStep(ado::Connection &connection);

    void end();
    // With its last writing, for which a server far away is waited once.
    void endWith(const QString &statement);
    void endWith(ado::Recordset &edited); ///< its Update()

private:
    ado::Connection &connection_;
    std::optional<ado::Transaction> own_;
};
