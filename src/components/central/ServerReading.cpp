#include "components/central/ServerReading.h"

#include "platform/ado/LibpqPatience.h"
#include "platform/ado/PostgresDial.h"
#include "platform/runtime/RuntimeError.h"

#include <libpq-fe.h>
#include <sys/socket.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace central {

namespace {

/// What the library is told.
ado::PostgresParameters parametersOf(const QString &address)
{
    const ado::PostgresParameters told = ado::postgresParameters(address.section(QStringLiteral("://"), 1));
    const bool several = std::ranges::any_of(told, [](const auto &parameter) {
        return parameter.first == QLatin1String("host") && parameter.second.contains(u',');
    });
    ado::PostgresParameters parameters(std::begin(ado::libpqPatience), std::end(ado::libpqPatience));
    // The second of several servers is to be reached in time, too; the library knows no shorter wait than two seconds.
    parameters << std::pair(QStringLiteral("connect_timeout"), several ? QStringLiteral("2") : QStringLiteral("4"))
               << told << std::pair(QStringLiteral("client_encoding"), QStringLiteral("UTF8"));
    return parameters;
}

struct Clear
{
    void operator()(PGresult *result) const { PQclear(result); }
};
using Result = std::unique_ptr<PGresult, Clear>;

} // namespace

struct ServerReading::Shared
{
    std::mutex mutex;
    std::condition_variable ended;
    bool done = false;
    bool abandoned = false;
    int socket = -1; ///< while the session stands
    std::atomic<qint64> signs = 0;
    std::atomic<qint64> rowCount = 0;

    std::vector<QStringList> rows;
    QString trouble; ///< in the server's or its library's words
    QByteArray state;
    bool lost = false; ///< otherwise the server refused

    void run(const ado::PostgresParameters &parameters, const QByteArray &statement);
    void read(PGconn *session, const QByteArray &statement);
    bool complain(PGconn *session, const PGresult *result);
    /// Whether the session may be used; from then on it can be cut off.
    bool holds(PGconn *session);
    void letGo();
};

bool ServerReading::Shared::holds(PGconn *session)
{
    const std::lock_guard lock(mutex);
    socket = PQsocket(session);
    return !abandoned;
}

void ServerReading::Shared::letGo()
{
    const std::lock_guard lock(mutex);
    socket = -1;
}

bool ServerReading::Shared::complain(PGconn *session, const PGresult *result)
{
    lost = PQstatus(session) != CONNECTION_OK;
    trouble = QString::fromUtf8(result ? PQresultErrorMessage(result) : PQerrorMessage(session)).trimmed();
    state = PQresultErrorField(result, PG_DIAG_SQLSTATE);
    return false;
}

void ServerReading::Shared::read(PGconn *session, const QByteArray &statement)
{
    // Nothing is to be written there, and dates are to come in one form.
    const Result settings(PQexec(session, "SET DateStyle = ISO; SET default_transaction_read_only = on"));
    if (PQresultStatus(settings.get()) != PGRES_COMMAND_OK) {
        complain(session, settings.get());
        return;
    }
    ++signs;
    if (PQsendQuery(session, statement.constData()) == 0) {
        complain(session, nullptr);
        return;
    }
    PQsetSingleRowMode(session);
    while (const Result result{PQgetResult(session)}) {
        const ExecStatusType status = PQresultStatus(result.get());
        if (status != PGRES_SINGLE_TUPLE && status != PGRES_TUPLES_OK) {
            complain(session, result.get());
            return;
        }
        for (int row = 0; row < PQntuples(result.get()); ++row) {
            QStringList cells;
            for (int column = 0; column < PQnfields(result.get()); ++column)
                cells << (PQgetisnull(result.get(), row, column)
                              ? QString()
                              : QString::fromUtf8(PQgetvalue(result.get(), row, column),
                                                  PQgetlength(result.get(), row, column)));
            rows.push_back(std::move(cells));
            ++rowCount;
        }
        ++signs;
    }
}

void ServerReading::Shared::run(const ado::PostgresParameters &parameters, const QByteArray &statement)
{
    PGconn *const session = ado::connectTo(parameters);
    ++signs;
    if (PQstatus(session) != CONNECTION_OK)
        complain(session, nullptr);
    else if (holds(session))
        read(session, statement);
    letGo();
    PQfinish(session);
    const std::lock_guard lock(mutex);
    done = true;
    ended.notify_all();
}

ServerReading::ServerReading(const QString &address, const QString &statement)
    : shared_(std::make_shared<Shared>())
{
    std::thread([shared = shared_, parameters = parametersOf(address), text = statement.toUtf8()] {
        shared->run(parameters, text);
    }).detach();
}

ServerReading::~ServerReading()
{
    const std::lock_guard lock(shared_->mutex);
    shared_->abandoned = true;
    if (shared_->socket >= 0)
        ::shutdown(shared_->socket, SHUT_RDWR);
}

bool ServerReading::isDone(int milliseconds) const
{
    std::unique_lock lock(shared_->mutex);
    return shared_->ended.wait_for(lock, std::chrono::milliseconds(milliseconds), [this] { return shared_->done; });
}

qint64 ServerReading::signs() const
{
    return shared_->signs;
}

qint64 ServerReading::rowsSoFar() const
{
    return shared_->rowCount;
}

std::vector<QStringList> ServerReading::take()
{
    if (shared_->trouble.isEmpty() && !shared_->lost)
        return std::move(shared_->rows);
    using enum runtime::ErrorNumber;
    throw runtime::RuntimeError(shared_->lost ? ConnectionLost : Database,
                                shared_->lost
                                    ? QStringLiteral("본부의 물품 서버에 연결할 수 없습니다.")
                                    : QStringLiteral("본부의 물품 목록을 가져오지 못했습니다. 개발사로 문의하십시오."),
                                {shared_->state, shared_->trouble});
}

} // namespace central
