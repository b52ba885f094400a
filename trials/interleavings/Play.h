#pragma once

#include "trials/interleavings/DeskProcess.h"
#include "trials/interleavings/Orders.h"
#include "trials/interleavings/Stage.h"

#include <deque>
#include <functional>

namespace trial {

using Desks = std::deque<DeskProcess>;

/// What came of one order of the statements of some operations.
struct Played
{
    std::vector<Choice> choices;
    std::vector<Told> told;        ///< of each desk
    std::vector<bool> begunBefore; ///< whether the desk had sent a statement when the first of the others ended
    QStringList steps;             ///< "1 waits: SELECT ...", for whoever has to see what happened
    int firstToEnd = -1;
    bool deadlock = false; ///< they waited for one another, and the server refused one of them
    QString trouble;       ///< empty unless the order could not be run
};

/// Runs the operations on the clinic as it was kept, by those first choices; afterwards nobody is interrupted.
/// `afterStep` is called after each statement.
Played play(Stage &stage, Desks &desks, const std::vector<int> &operations, const std::vector<int> &first,
            const std::function<void()> &afterStep = {});

} // namespace trial
