#pragma once

#include "components/central/Offer.h"
#include "platform/ado/Connection.h"

namespace central {

/// Many rows of values, a block of them by one statement: BEFORE (...),(...) BEHIND. What was added stands after finish().
class Blocks
{
public:
    Blocks(ado::Connection &connection, QString before, QString behind, const Progress &progress);

    /// All rows are of one length; null for NULL.
    void add(const QStringList &row);
    void finish();

private:
    void send(qsizetype from, qsizetype to);

    ado::Connection &connection_;
    const QString before_, behind_;
    const Progress &progress_;
    std::vector<QStringList> rows_;
};

} // namespace central
