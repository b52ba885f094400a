#include "platform/ado/PostgresDriver.h"
#include "platform/ado/PostgresStatement.h"
#include "platform/ado/Wait.h"

#include <QScopeGuard>
#include <QScopedValueRollback>

#include <libpq-fe.h>

#include <algorithm>
#include <utility>

// What is sent together, and how its answers are waited for.

namespace ado {

using namespace postgresStatement;

bool PostgresDriver::isDone(const pg_result *result)
{
    const ExecStatusType status = PQresultStatus(result);
    return status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK || status == PGRES_EMPTY_QUERY;
}

std::vector<PostgresDriver::Results> PostgresDriver::exchange(std::span<const Bundle> bundles)
{
    if (awaited_)
        refuseWhileAwaited();
    takeWhatIsOnTheWay();
    const QScopedValueRollback underWay(awaited_, true);
    unsent_.clear();
    if (settings_.empty())
        return exchangeAll(bundles);
    // Only what writes nothing goes along: it may be run in a session whose settings were refused.
    std::vector<Bundle> all{std::exchange(settings_, {})};
    if (std::ranges::all_of(bundles, [](const Bundle &one) { return std::ranges::all_of(one, isReading); }))
        all.insert(all.end(), bundles.begin(), bundles.end());
    std::vector<Results> results = exchangeAll(all);
    requireSettled(results.front());
    results.erase(results.begin());
    if (results.empty() && !bundles.empty())
        return exchangeAll(bundles);
    return results;
}

void PostgresDriver::requireSettled(const Results &settings)
{
    auto ended = qScopeGuard([this] { closeSession(); });
    requireDone(settings);
    ended.dismiss();
}

void PostgresDriver::waited(qint64 milliseconds)
{
    quickest_ = quickest_ < 0 ? milliseconds : std::min(quickest_, milliseconds);
}

std::vector<PostgresDriver::Results> PostgresDriver::exchangeAll(std::span<const Bundle> bundles)
{
    QElapsedTimer wait;
    wait.start();
    std::vector<Results> results;
    if ((bundles.size() > 1 || bundles[0].size() > 1) && PQenterPipelineMode(session())) {
        results = exchangeInOneGo(bundles);
        leavePipeline();
    } else {
        results.push_back(oneAfterTheOther(bundles[0]));
    }
    waited(wait.elapsed());
    for (std::size_t at = 0; at < results.size(); ++at)
        results[at].resize(bundles[at].size());
    return results;
}

std::vector<PostgresDriver::Results> PostgresDriver::exchangeInOneGo(std::span<const Bundle> bundles)
{
    return answersInOneGo(sendInOneGo(bundles));
}

std::vector<std::size_t> PostgresDriver::sendInOneGo(std::span<const Bundle> bundles)
{
    std::vector<std::size_t> sent;
    for (const Bundle &bundle : bundles) {
        const auto unsent = std::ranges::find_if_not(bundle, [this](const Command &one) { return send(one); });
        sent.push_back(std::size_t(unsent - bundle.begin()));
        if (!PQpipelineSync(session()) || unsent != bundle.end())
            break;
    }
    return sent;
}

std::vector<PostgresDriver::Results> PostgresDriver::answersInOneGo(std::span<const std::size_t> sent)
{
    Wait wait;
    bool awaits = true;
    std::vector<Results> results;
    for (const std::size_t count : sent)
        results.push_back(answers(count, wait, awaits));
    return results;
}

void PostgresDriver::sendForeseen()
{
    // In a host's session the next statement may be its own.
    const bool mayGo = !isLent() && !awaited_ && onTheWay_.empty() && settings_.empty() && session();
    if (!mayGo || holdsTransaction())
        return;
    std::vector<Command> next = sendable(std::exchange(expected_, {}), readsAsTheLayer());
    if (next.empty() || !PQenterPipelineMode(session()))
        return;
    std::vector<Bundle> bundles;
    for (const Command &one : next)
        bundles.push_back({one});
    onTheWay_ = sendInOneGo(bundles);
    for (Command &one : next)
        foreseen_.push_back({std::move(one), nullptr, true});
    foreseenAt_.start();
}

/// What was forgotten meanwhile is heard and left.
void PostgresDriver::takeWhatIsOnTheWay()
{
    if (onTheWay_.empty())
        return;
    const QScopedValueRollback underWay(awaited_, true);
    std::vector<Results> results = answersInOneGo(std::exchange(onTheWay_, {}));
    leavePipeline();
    const auto first = std::ranges::find_if(foreseen_, &Foreseen::onTheWay);
    std::vector<Command> selects;
    std::ranges::transform(first, foreseen_.end(), std::back_inserter(selects), &Foreseen::select);
    foreseen_.erase(first, foreseen_.end());
    results.resize(std::min(results.size(), selects.size()));
    for (Results &one : results)
        one.resize(1);
    keepForeseen(std::move(selects), results, nullptr);
}

void PostgresDriver::leavePipeline()
{
    if (!PQexitPipelineMode(session()) && !isLent())
        closeSession();
}

PostgresDriver::Results PostgresDriver::oneAfterTheOther(const Bundle &bundle)
{
    Results results;
    for (const Command &statement : bundle) {
        results.push_back(send(statement) ? answer() : Result());
        if (!isDone(results.back().get()))
            break;
    }
    return results;
}

bool PostgresDriver::send(const Command &statement)
{
    settled_ = settled_ && keepsSettings(statement);
    std::vector<QByteArray> texts;
    std::vector<const char *> values;
    for (const QVariant &value : statement.values()) {
        texts.push_back(value.typeId() == QMetaType::Double ? QByteArray::number(value.toDouble(), 'g', 17)
                                                            : value.toString().toUtf8());
    }
    for (std::size_t at = 0; at < texts.size(); ++at)
        values.push_back(statement.values()[static_cast<qsizetype>(at)].isValid() ? texts[at].constData() : nullptr);
    const bool sent = PQsendQueryParams(session(), statement.text().toUtf8().constData(),
                                        static_cast<int>(values.size()), nullptr, values.data(), nullptr, nullptr, 0);
    if (!sent)
        unsent_ = QString::fromUtf8(PQerrorMessage(session()));
    return sent;
}

void PostgresDriver::requireDone(const Results &results)
{
    const auto failed = std::ranges::find_if_not(results, [](const Result &one) { return isDone(one.get()); });
    if (failed == results.end())
        return;
    if (PQstatus(session()) == CONNECTION_BAD)
        sessionLost();
    const PGresult *const said = failed->get();
    refuse(said                ? QString::fromUtf8(PQresultErrorMessage(said))
           : unsent_.isEmpty() ? QString::fromUtf8(PQerrorMessage(session()))
                               : unsent_,
           PQresultErrorField(said, PG_DIAG_SQLSTATE));
}

PostgresDriver::Result PostgresDriver::answer()
{
    Wait wait;
    awaitAnswer(wait);
    Result last;
    while (Result next = ownedResult(PQgetResult(session()))) {
        last = std::move(next);
        const ExecStatusType status = PQresultStatus(last.get());
        if (status == PGRES_COPY_IN || status == PGRES_COPY_OUT || status == PGRES_COPY_BOTH) {
            PQclear(PQexec(session(), "")); // which ends a copy that nobody carries on
            break;
        }
        if (PQstatus(session()) == CONNECTION_BAD)
            break;
    }
    return last;
}

/// Behind the answers to all of a bundle comes one more, that to its end.
PostgresDriver::Results PostgresDriver::answers(std::size_t count, Wait &wait, bool &awaits)
{
    Results results;
    for (int nothing = 0; nothing < 2 && PQstatus(session()) != CONNECTION_BAD;) { // each answer ends with nothing
        awaits = awaits && awaitAnswer(wait);
        Result next = ownedResult(PQgetResult(session()));
        if (PQresultStatus(next.get()) == PGRES_PIPELINE_SYNC)
            break;
        nothing = next ? 0 : nothing + 1;
        if (next && results.size() < count)
            results.push_back(std::move(next));
    }
    return results;
}

bool PostgresDriver::awaitAnswer(Wait &wait)
{
    doMeanwhile();
    while (wait.isAlive() && PQisBusy(session())) {
        if (PQsocket(session()) < 0)
            return false;
        if (waitForSocket(PQsocket(session()), wait.moment())) {
            if (!PQconsumeInput(session()) || PQsslInUse(session()))
                return false;                   // encrypted, the rest may have come with the first of it
        } else if (!wait.goOn() && !isLent()) { // a host's session is not ended here
            closeSession();
            return false;
        }
    }
    return true;
}

} // namespace ado
