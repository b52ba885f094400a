#include "trials/interleavings/Judge.h"

#include "platform/runtime/RuntimeError.h"
#include "trials/interleavings/Operations.h"

#include <algorithm>
#include <stdexcept>

namespace trial {

namespace {

const Operation &operationAt(int index)
{
    return operations()[std::size_t(index)];
}

QString nameOf(int index)
{
    return QString::fromUtf8(operationAt(index).name);
}

} // namespace

Judge::Judge(Stage &stage, Desks &desks)
    : stage_(stage)
    , desks_(desks)
{
    stage_.putBack();
    before_ = stage_.rows();
    for (std::size_t operation = 0; operation < operations().size(); ++operation)
        alone_.push_back(runAlone(int(operation)));
}

Judge::Alone Judge::runAlone(int operation)
{
    Alone alone{{Change()}, 0};
    const Played played = play(stage_, desks_, {operation}, {}, [&] {
        ++alone.statements;
        Change change = changeOf(before_, stage_.rows());
        if (change != alone.steps.back())
            alone.steps.push_back(std::move(change));
    });
    if (!played.trouble.isEmpty() || !played.told[0].saved)
        throw std::runtime_error((nameOf(operation) + u' ' + played.trouble + played.told[0].text).toStdString());
    return alone;
}

QStringList Judge::faults(const std::vector<int> &operations, const Played &played)
{
    if (!played.trouble.isEmpty())
        return {played.trouble};
    QStringList faults;
    if (played.deadlock)
        faults << QStringLiteral("the desks wait for one another");
    checkTold(operations, played, faults);
    checkRows(operations, played, faults);
    return faults;
}

void Judge::checkTold(const std::vector<int> &operations, const Played &played, QStringList &faults) const
{
    for (std::size_t desk = 0; desk < operations.size(); ++desk) {
        const Told &told = played.told[desk];
        if (told.error != 0 && told.error != int(runtime::ErrorNumber::Conflict))
            faults << nameOf(operations[desk]) + QStringLiteral(" is refused with another error: ") + told.text;
        checkConflict(operations, played, desk, faults);
    }
    for (std::size_t one = 0; one < operations.size(); ++one) {
        for (std::size_t other = one + 1; other < operations.size(); ++other) {
            const Operation &first = operationAt(operations[one]), &second = operationAt(operations[other]);
            if (played.told[one].saved && played.told[other].saved && (first.needs & second.changes)
                && (second.needs & first.changes))
                faults << nameOf(operations[one]) + QStringLiteral(" and ") + nameOf(operations[other])
                              + QStringLiteral(" are both told to be saved");
        }
    }
}

/// A refusal has its reason in what another has saved, and what another had saved before the desk began is a reason.
void Judge::checkConflict(const std::vector<int> &operations, const Played &played, std::size_t desk,
                          QStringList &faults) const
{
    const Operation &own = operationAt(operations[desk]);
    bool reason = false;
    for (std::size_t other = 0; other < operations.size(); ++other) {
        if (other == desk)
            continue;
        const unsigned changed = operationAt(operations[other]).changes;
        const bool steps = alone_[std::size_t(operations[other])].steps.size() > 2;
        reason = reason || (((own.needs | own.minds) & changed) && (played.told[other].saved || steps));
        const bool came = played.firstToEnd == int(other) && played.told[other].saved && !played.begunBefore[desk];
        if (came && (own.needs & changed) && played.told[desk].saved)
            faults << nameOf(operations[desk]) + QStringLiteral(" is saved over ") + nameOf(operations[other]);
    }
    if (!played.told[desk].saved && !reason)
        faults << nameOf(operations[desk]) + QStringLiteral(" is refused without a reason: ") + played.told[desk].text;
}

void Judge::checkRows(const std::vector<int> &operations, const Played &played, QStringList &faults)
{
    const Rows now = stage_.rows();
    const Change found = changeOf(before_, now);
    Allowance allowance;
    int onNewDay = 0;
    for (std::size_t desk = 0; desk < operations.size(); ++desk) {
        const Operation &operation = operationAt(operations[desk]);
        if (played.told[desk].saved || alone_[std::size_t(operations[desk])].steps.size() > 2)
            allowance.set |= operation.sets;
        allowance.reckoned = allowance.reckoned || (operation.changes & Lines1);
        onNewDay += (operation.changes & NewDay) != 0;
    }
    allowance.sharedDay = onNewDay > 1;
    // One that was refused may have saved some of its steps, but not the last one.
    std::vector<std::size_t> taken(operations.size());
    QString difference;
    for (;;) {
        std::vector<const Change *> parts;
        for (std::size_t desk = 0; desk < operations.size(); ++desk) {
            const std::vector<Change> &steps = alone_[std::size_t(operations[desk])].steps;
            parts.push_back(played.told[desk].saved ? &steps.back() : &steps[taken[desk]]);
        }
        const QString other = differenceFrom(before_, found, parts, allowance);
        if (other.isEmpty())
            break;
        difference = difference.isEmpty() ? other : difference;
        std::size_t desk = 0;
        for (; desk < operations.size(); ++desk) {
            const std::size_t steps = alone_[std::size_t(operations[desk])].steps.size() - 1;
            if (!played.told[desk].saved && ++taken[desk] < steps)
                break;
            taken[desk] = 0;
        }
        if (desk == operations.size()) {
            faults << difference;
            break;
        }
    }
    const auto known = violations_.find(now);
    faults << (known != violations_.end() ? known->second : violations_[now] = stage_.violations());
}

} // namespace trial
