#pragma once

#include "platform/ado/Connection.h"
#include "trials/desk/Journal.h"

#include <QStringList>

/// Compares what desks say they did with what the database holds, by plain queries.
namespace trial {

/// The clinic as it stood before the trial; nothing of it may be touched.
struct Before
{
    qint32 lastOrder = 0;
    qint32 lastLine = 0;
    qint32 lastEntry = 0;
    qint32 lastProduct = 0;
    QString sums; ///< counts and sums of the old rows, as text
};

Before before(const ado::Connection &clinic);

struct Findings
{
    QStringList faults; ///< each a sentence; empty when all is well
    int acknowledged = 0;
    int refused = 0;
    int conflicts = 0;  ///< refused, and another desk wrote to the same order meanwhile
    int unfinished = 0; ///< the desk died in it
    int halfDone = 0;   ///< refused or unfinished, and some steps of it stand
    int orders = 0, lines = 0, entries = 0, products = 0; ///< of the trial, that stand
};

Findings audit(const ado::Connection &clinic, const Before &before, const std::vector<std::vector<Deed>> &journals);

} // namespace trial
