#include "bench/far/Replay.h"

#include "bench/far/BareSession.h"

#include <QElapsedTimer>

#include <algorithm>
#include <optional>
#include <stdexcept>

namespace bench {

namespace {

/// By what went through the wire.
void requireSame(const Traffic &one, const Traffic &again, const BareSession::Said &said)
{
    if (!std::ranges::equal(one.sent, again.sent, &Sent::isSame) || one.answers != again.answers
        || one.dialled != again.dialled || one.cells != again.cells || one.cells != said.cells)
        throw std::runtime_error("bare: it was not said as before");
    int awaited = one.dialled ? 1 : 0;
    for (std::size_t at = 0; at < one.sent.size(); ++at)
        awaited += one.isAwaited(at) ? 1 : 0;
    if (said.waits != awaited || again.waits < awaited)
        throw std::runtime_error("bare: it was not waited as before");
}

/// How long it took with the least waits, in milliseconds.
double sayAgain(Place &place, std::optional<BareSession> &session, const Traffic &traffic, int least)
{
    if (traffic.dialled)
        session.reset();
    place.wire().take();
    QElapsedTimer clock;
    clock.start();
    if (traffic.dialled)
        session.emplace(place.farCopy());
    BareSession::Said said = session.value().send(traffic);
    const double milliseconds = double(clock.nsecsElapsed()) / 1e6;
    said.waits += traffic.dialled ? 1 : 0;
    requireSame(traffic, place.wire().take(), said);
    return milliseconds - double(std::max(said.waits - least, 0)) * double(place.waitMilliseconds());
}

} // namespace

void replay(Place &place, std::vector<Step> &session)
{
    std::optional<BareSession> bare;
    for (Step &step : session) {
        Taken &taken = step.taken;
        if (taken.before.dialled || !taken.before.sent.empty())
            sayAgain(place, bare, taken.before, 0);
        taken.bare += sayAgain(place, bare, taken.traffic, step.least);
        if (!taken.rows.isEmpty() && place.rowsOfCopy() != taken.rows)
            throw std::runtime_error(std::string("bare: other rows than the desk's: ") + step.what);
    }
}

} // namespace bench
