#include "platform/ado/PostgresDriver.h"

#include "platform/ado/LibpqPatience.h"
#include "platform/ado/PostgresDial.h"
#include "platform/ado/PostgresSession.h"
#include "platform/ado/Wait.h"
#include "platform/runtime/Attempt.h"

#include <QScopedValueRollback>

#include <libpq-fe.h>

#include <algorithm>
#include <utility>

namespace ado {

namespace {

// Type numbers of the server's catalogue, which never change.
constexpr Oid numericTypes[]{16 /* bool */,    20 /* int8 */,    21 /* int2 */, 23 /* int4 */,
                             700 /* float4 */, 701 /* float8 */, 1700 /* numeric */};

bool isNumeric(Oid type)
{
    return std::ranges::find(numericTypes, type) != std::end(numericTypes);
}

bool areKnown(const PostgresParameters &parameters)
{
    const std::unique_ptr<PQconninfoOption, decltype(&PQconninfoFree)> all(PQconninfoParse("", nullptr),
                                                                           &PQconninfoFree);
    return std::ranges::all_of(parameters, [&](const auto &parameter) {
        const PQconninfoOption *option = all.get();
        while (option && option->keyword && parameter.first != QLatin1String(option->keyword))
            ++option;
        return option && option->keyword;
    });
}

} // namespace

void PostgresDriver::ResultDeleter::operator()(pg_result *result) const
{
    PQclear(result);
}

PostgresDriver::PostgresDriver(const PostgresParameters &parameters)
    : parameters_(parameters)
{
}

PostgresDriver::~PostgresDriver()
{
    PostgresDriver::closeSession();
}

void PostgresDriver::openSession()
{
    // The library quotes a name that it does not know, and that may be a part of a password which stands bare.
    if (!areKnown(parameters_))
        connectionLost(QStringLiteral("주소의 ? 뒤에 모르는 옵션이 있습니다. 옵션의 이름을 확인하십시오."));
    {
        const QScopedValueRollback underWay(awaited_, true);
        handle_ = dial(asked());
    }
    ending_ = false;
    if (PQstatus(handle_) != CONNECTION_OK) {
        QString why = QString::fromUtf8(PQerrorMessage(handle_)).trimmed();
        if (std::ranges::any_of(parameters_, [](const auto &parameter) {
                return parameter.first == QLatin1String("target_session_attrs")
                       && parameter.second != QLatin1String("any");
            }))
            why += QStringLiteral("\n주소에 적힌 서버 가운데 target_session_attrs에 맞는 서버가 지금 없습니다.");
        closeSession();
        connectionLost(why);
    }
    PQsetNoticeReceiver(handle_, &PostgresDriver::notice, this);
    putReadingRight();
    run(QStringLiteral("SET client_min_messages = warning"));
    run(QStringLiteral("SET DateStyle = ISO"));
    run(postgresSession::patience);
    run(postgresSession::likeOperator);
}

PostgresParameters PostgresDriver::asked() const
{
    // Of two of a name the library takes the later, that is the address's; but the texts are UTF-8 whatever it says.
    PostgresParameters parameters(std::begin(libpqPatience), std::end(libpqPatience));
    const bool several = lookForWriter(parameters_);
    if (several) // one that is silent is not to keep the desk from the one that answers
        parameters << std::pair(QStringLiteral("connect_timeout"), QStringLiteral("3"));
    parameters << (several ? beginningAfter(lostAt_, parameters_) : parameters_)
               << std::pair(QStringLiteral("client_encoding"), QStringLiteral("UTF8"));
    return parameters;
}

void PostgresDriver::closeSession()
{
    if (handle_ && PQhost(handle_))
        lostAt_ = placeOf(QString::fromUtf8(PQhost(handle_)), QString::fromUtf8(PQport(handle_)), parameters_);
    PQfinish(std::exchange(handle_, nullptr));
}

bool PostgresDriver::readsAsTheLayer() const
{
    return qstrcmp(PQparameterStatus(session(), "standard_conforming_strings"), "on") == 0
           && qstrcmp(PQparameterStatus(session(), "client_encoding"), "UTF8") == 0;
}

void PostgresDriver::putReadingRight()
{
    for (const QString &setting : postgresSession::readAsTheLayer)
        run(setting);
}

PostgresDriver::Result PostgresDriver::run(const Command &statement)
{
    if (session() && statement.text().contains(u'\'') && !readsAsTheLayer()) {
        runtime::Attempt next; // the next statement is to find it right
        next([this] { putReadingRight(); });
        refuseOtherReading();
    }
    std::vector<QByteArray> texts;
    std::vector<const char *> values;
    for (const QVariant &value : statement.values()) {
        texts.push_back(value.typeId() == QMetaType::Double ? QByteArray::number(value.toDouble(), 'g', 17)
                                                            : value.toString().toUtf8());
    }
    for (std::size_t at = 0; at < texts.size(); ++at)
        values.push_back(statement.values()[static_cast<qsizetype>(at)].isValid() ? texts[at].constData() : nullptr);
    if (awaited_)
        refuseWhileAwaited();
    const QScopedValueRollback underWay(awaited_, true);
    Result result;
    if (PQsendQueryParams(session(), statement.text().toUtf8().constData(), static_cast<int>(values.size()), nullptr,
                          values.data(), nullptr, nullptr, 0))
        result = answer();
    const ExecStatusType status = PQresultStatus(result.get());
    if (status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK || status == PGRES_EMPTY_QUERY)
        return result;
    if (PQstatus(session()) == CONNECTION_BAD)
        sessionLost();
    refuse(QString::fromUtf8(result ? PQresultErrorMessage(result.get()) : PQerrorMessage(session())),
           PQresultErrorField(result.get(), PG_DIAG_SQLSTATE));
}

PostgresDriver::Result PostgresDriver::answer()
{
    awaitAnswer();
    Result last;
    while (Result next{PQgetResult(session())}) {
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

void PostgresDriver::awaitAnswer()
{
    Wait wait;
    while (wait.isAlive() && PQisBusy(session())) {
        if (PQsocket(session()) < 0)
            return;
        if (waitForSocket(PQsocket(session()), wait.moment())) {
            if (!PQconsumeInput(session()) || PQsslInUse(session()))
                return;                         // encrypted, the rest may have come with the first of it
        } else if (!wait.goOn() && !isLent()) { // a host's session is not ended here
            closeSession();
            return;
        }
    }
}

PostgresDriver::Result PostgresDriver::run(const QString &statement)
{
    return run(command() << statement);
}

CellTable PostgresDriver::read(const Command &select)
{
    const Result result = run(select);
    const PGresult *const rows = result.get();
    const int columnCount = PQnfields(rows);
    const int rowCount = PQntuples(rows);
    std::vector<ResultColumn> described;
    for (int column = 0; column < columnCount; ++column)
        described.push_back(
            describeColumn(QString::fromUtf8(PQfname(rows, column)), isNumeric(PQftype(rows, column)), select.text()));
    CellTable table(std::move(described));
    for (int row = 0; row < rowCount; ++row) {
        for (int column = 0; column < columnCount; ++column) {
            if (PQgetisnull(rows, row, column))
                table.addNull();
            else
                table.addText(PQgetvalue(rows, row, column), static_cast<std::size_t>(PQgetlength(rows, row, column)));
        }
    }
    return table;
}

int PostgresDriver::write(const Command &statement)
{
    const Result result = run(statement);
    bool told = false;
    const int rows = QByteArray(PQcmdTuples(result.get())).toInt(&told);
    return told ? rows : -1;
}

void PostgresDriver::begin()
{
    if (!readsAsTheLayer())
        putReadingRight(); // inside, a failed statement would take it back
    run(QStringLiteral("BEGIN"));
}

void PostgresDriver::commit()
{
    // The server answers a commit of a failed transaction with a rollback and no error.
    const Result result = run(QStringLiteral("COMMIT"));
    if (qstrcmp(PQcmdStatus(result.get()), "COMMIT") != 0)
        refuse(QString::fromUtf8(PQcmdStatus(result.get())));
}

void PostgresDriver::rollback()
{
    run(QStringLiteral("ROLLBACK"));
}

bool PostgresDriver::holdsTransaction() const
{
    const PGTransactionStatusType status = PQtransactionStatus(session());
    return status == PQTRANS_INTRANS || status == PQTRANS_INERROR || status == PQTRANS_ACTIVE;
}

bool PostgresDriver::alive(Asking)
{
    // A server that was stopped has said so and closed the socket, which can be seen without asking it.
    const bool open = PQstatus(session()) == CONNECTION_OK && PQconsumeInput(session()) == 1;
    PQisBusy(session()); // lets notice() see what came in
    return open && !ending_ && PQstatus(session()) == CONNECTION_OK;
}

void PostgresDriver::notice(void *driver, const pg_result *message)
{
    if (qstrcmp(PQresultErrorField(message, PG_DIAG_SEVERITY_NONLOCALIZED), "FATAL") == 0)
        static_cast<PostgresDriver *>(driver)->ending_ = true;
}

} // namespace ado
