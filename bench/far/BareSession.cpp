#include "bench/far/BareSession.h"

#include <libpq-fe.h>

#include <stdexcept>

namespace bench {

namespace {

using Result = std::unique_ptr<PGresult, decltype(&PQclear)>;

} // namespace

void BareSession::Hang::operator()(pg_conn *session) const
{
    PQfinish(session);
}

BareSession::BareSession(const QString &address)
    : session_(PQconnectdb(qPrintable(address + QStringLiteral("&client_encoding=UTF8"))))
{
    if (PQstatus(session_.get()) != CONNECTION_OK || !PQenterPipelineMode(session_.get()))
        refuse("no session");
}

BareSession::Said BareSession::send(const Traffic &traffic)
{
    const std::vector<Sent> &sent = traffic.sent;
    if (traffic.isStrange || (!sent.empty() && !sent.back().ends) || sent.size() != traffic.answers.size())
        throw std::runtime_error("what was said cannot be said once more");
    cells_.clear();
    int waits = 0;
    std::size_t answered = 0;
    for (std::size_t at = 0; at < sent.size(); ++at) {
        send(sent[at]);
        if (!traffic.isAwaited(at))
            continue;
        ++waits;
        for (; answered <= at; ++answered)
            receive(sent[answered], traffic.answers[answered]);
    }
    return {waits, cells_.size()};
}

void BareSession::send(const Sent &statement)
{
    std::vector<const char *> values;
    for (const auto &value : statement.values)
        values.push_back(value ? value->c_str() : nullptr);
    const bool sent = PQsendQueryParams(session_.get(), statement.text.c_str(), int(values.size()), nullptr,
                                        values.data(), nullptr, nullptr, 0);
    if (!sent || (statement.ends && !PQpipelineSync(session_.get())))
        refuse(statement.text);
}

/// Behind each answer comes nothing, and behind the last of a run one more, that to its end.
void BareSession::receive(const Sent &statement, const std::string &answer)
{
    const Result result(PQgetResult(session_.get()), &PQclear);
    if (PQcmdStatus(result.get()) != answer)
        refuse(statement.text + "\nwas answered by \"" + answer + "\" and now by \"" + PQcmdStatus(result.get())
               + "\"");
    const int columns = PQnfields(result.get());
    for (int row = 0; row < PQntuples(result.get()); ++row) {
        for (int column = 0; column < columns; ++column)
            cells_.append(PQgetvalue(result.get(), row, column), std::size_t(PQgetlength(result.get(), row, column)));
    }
    const bool done = !Result(PQgetResult(session_.get()), &PQclear);
    const Result end(done && statement.ends ? PQgetResult(session_.get()) : nullptr, &PQclear);
    if (!done || (statement.ends && PQresultStatus(end.get()) != PGRES_PIPELINE_SYNC))
        refuse(statement.text);
}

void BareSession::refuse(const std::string &why) const
{
    throw std::runtime_error("bare: " + why + "\n" + PQerrorMessage(session_.get()));
}

} // namespace bench
