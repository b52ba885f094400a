#include "platform/ado/PostgresDriver.h"

#include "platform/ado/LibpqPatience.h"
#include "platform/ado/PostgresDial.h"
#include "platform/ado/PostgresSession.h"
#include "platform/ado/PostgresStatement.h"
#include "platform/runtime/Attempt.h"

#include <QScopedValueRollback>

#include <libpq-fe.h>

#include <algorithm>
#include <utility>

namespace ado {

using namespace postgresStatement;

namespace {

/// The server has waited for a lock as long as it does.
bool isWaitedInVain(const PGresult *result)
{
    return qstrcmp(PQresultErrorField(result, PG_DIAG_SQLSTATE), "55P03") == 0;
}

} // namespace

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
        QElapsedTimer dialling;
        dialling.start();
        handle_ = dial(asked());
        quickest_ = dialling.elapsed();
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
    // Were one of the first refused, those with literals behind them would not be run.
    for (const QString &setting :
         postgresSession::readAsTheLayer
             + QStringList{QStringLiteral("SET client_min_messages = warning"), QStringLiteral("SET DateStyle = ISO"),
                           postgresSession::patience, postgresSession::likeOperator})
        settings_.push_back(command() << setting);
    if (!readsAsTheLayer())
        settle();
}

/// The session's settings are sent by now.
void PostgresDriver::settle()
{
    if (!settings_.empty() && !awaited_)
        exchange({});
}

void *PostgresDriver::handle()
{
    takeWhatIsOnTheWay();
    settle();
    return session();
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
    settings_.clear();
    ahead_.clear();
    foreseen_.clear();
    expected_.clear();
    onTheWay_.clear();
    earlyCommit_.reset();
    commitsBehindNext_ = settled_ = false;
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

PostgresDriver::Result PostgresDriver::run(const Command &statement, const Guard *guard)
{
    foreseen_.clear();
    const bool together = keepsTransaction(statement.text());
    const bool commits = std::exchange(commitsBehindNext_, false) && guard && together;
    if (earlyCommit_)
        guard = nullptr; // what it stood in has ended
    std::vector<Command> expected = takeAhead(statement);
    if (guard)
        ahead_.push_back(guard->before);
    // What the layer puts before it changes no setting.
    if (session() && holdsLiteral(statement) && !readsAsTheLayer()) {
        runtime::Attempt next; // the next statement is to find it right
        next([this] { putReadingRight(); });
        refuseOtherReading();
    }
    std::vector<Bundle> bundles{std::exchange(ahead_, {})};
    if (!together && !bundles[0].empty())
        requireDone(exchange(std::exchange(bundles, std::vector<Bundle>(1))).front());
    const std::size_t wanted = bundles[0].size();
    bundles[0].push_back(statement);
    if (guard && together)
        bundles[0].push_back(guard->behind);
    if (commits)
        return std::move(commitWith(std::move(bundles[0]))[wanted]);
    for (const Command &next : expected)
        bundles.push_back(guard ? Bundle{guard->before, next, guard->behind} : Bundle{next});
    std::vector<Results> results = exchange(bundles);
    if (guard) // else each stands for itself
        requireDone(results[0]);
    keepForeseen(std::move(expected), std::span(results).subspan(1), guard);
    requireDone(results[0]);
    if (guard && !together && holdsTransaction())
        run(guard->behind);
    return std::move(results[0][wanted]);
}

std::vector<Command> PostgresDriver::takeAhead(const Command &statement)
{
    std::vector<Command> expected = std::exchange(expected_, {});
    if (!expected.empty() && isSame(expected.front(), statement))
        expected.erase(expected.begin());
    if (expected.empty() || !keepsTransaction(statement.text()))
        return {};
    return sendable(std::move(expected), session() && readsAsTheLayer() && keepsSettings(statement));
}

/// As many as were answered. Within a transaction one that failed is forgotten with those behind it: whoever asks for it meets
/// its error. Only a lock is not waited for once more.
void PostgresDriver::keepForeseen(std::vector<Command> selects, std::span<Results> answers, const Guard *guard)
{
    const auto done = [guard](const Results &results) {
        return std::ranges::all_of(results,
                                   [guard](const Result &one) { return guard ? isDone(one.get()) : bool(one); });
    };
    const auto good = std::size_t(std::ranges::find_if_not(answers, done) - answers.begin());
    if (guard && good < answers.size())
        run(guard->undo);
    for (std::size_t at = 0; at < good; ++at)
        foreseen_.push_back({std::move(selects[at]), std::move(answers[at][guard ? 1 : 0])});
    if (good < answers.size() && isWaitedInVain(answers[good][guard ? 1 : 0].get()))
        foreseen_.push_back({std::move(selects[good]), std::move(answers[good][guard ? 1 : 0])});
    foreseenAt_.start();
}

PostgresDriver::Result PostgresDriver::select(const Command &select, const Guard *guard)
{
    if (foreseenPlace(select) < std::ssize(foreseen_) && foreseen_[std::size_t(foreseenPlace(select))].onTheWay)
        takeWhatIsOnTheWay();
    if (foreseen_.empty() || !isForeseen(select))
        return run(select, guard);
    const auto found = foreseen_.begin() + foreseenPlace(select);
    Results rows;
    rows.push_back(std::move(found->rows));
    foreseen_.erase(found);
    commitsBehindNext_ = false;
    requireDone(rows);
    return std::move(rows.front());
}

void PostgresDriver::foresee(std::span<const Command> selects)
{
    const auto [came, told] = std::ranges::mismatch(foreseen_, selects, isSame, &Foreseen::select);
    const bool toldAgain = came != foreseen_.begin() && (came == foreseen_.end() || told == selects.end());
    const bool stays = toldAgain && isFresh();
    if (!stays)
        foreseen_.clear();
    expected_.assign(stays ? told : selects.begin(), selects.end());
}

bool PostgresDriver::isForeseen(const Command &select) const
{
    if (!foreseen_.empty())
        return foreseenPlace(select) < std::ssize(foreseen_) && isFresh() && session();
    return !expected_.empty() && isSame(expected_.front(), select);
}

/// They came in one go, so it does not matter which is asked for first.
std::ptrdiff_t PostgresDriver::foreseenPlace(const Command &select) const
{
    const auto isIt = [&](const Foreseen &one) { return isSame(one.select, select); };
    return std::ranges::find_if(foreseen_, isIt) - foreseen_.begin();
}

std::optional<CellTable> PostgresDriver::cameFor(const Command &select) const
{
    if (foreseen_.empty() || !isForeseen(select))
        return std::nullopt;
    const Result &rows = foreseen_[std::size_t(foreseenPlace(select))].rows;
    return rows && isDone(rows.get()) ? std::optional(rowsOf(rows, select.text())) : std::nullopt;
}

bool PostgresDriver::isFresh() const
{
    constexpr qint64 fresh = 1000; // a box may have stood between
    return foreseenAt_.elapsed() < fresh;
}

PostgresDriver::Result PostgresDriver::run(const QString &statement)
{
    return run(command() << statement);
}

CellTable PostgresDriver::read(const Command &select)
{
    return rowsOf(this->select(select), select.text());
}

CellTable PostgresDriver::readWithin(const Guard &guard, const Command &select)
{
    return rowsOf(this->select(select, &guard), select.text());
}

int PostgresDriver::write(const Command &statement)
{
    return rowsTouched(run(statement));
}

int PostgresDriver::writeWithin(const Guard &guard, const Command &statement)
{
    return rowsTouched(run(statement, &guard));
}

void PostgresDriver::writeAllWithin(const Guard &guard, std::span<const Command> statements)
{
    // In a host's session the next may be its own, which takes nothing along.
    const bool withNext = !isLent() && session() && readsAsTheLayer()
                          && sendable({statements.begin(), statements.end()}, true).size() == statements.size();
    if (!withNext)
        return Driver::writeAllWithin(guard, statements);
    foreseen_.clear();
    expected_.clear();
    for (const Command &statement : statements)
        ahead_.insert(ahead_.end(), {guard.before, statement, guard.behind});
}

int PostgresDriver::rowsTouched(const Result &result)
{
    bool told = false;
    const int rows = QByteArray(PQcmdTuples(result.get())).toInt(&told);
    return told ? rows : -1;
}

void PostgresDriver::begin()
{
    if (!readsAsTheLayer())
        putReadingRight(); // inside, a failed statement would take it back
    settled_ = true;
    ahead_.push_back(command() << u"BEGIN");
}

void PostgresDriver::commit()
{
    if (!earlyCommit_) {
        foreseen_.clear();
        expected_.clear();
        commitWith(std::exchange(ahead_, {}));
    }
    Results committed;
    committed.push_back(std::move(earlyCommit_));
    // The server answers a commit of a failed transaction with a rollback and no error.
    const char *const status = PQcmdStatus(committed[0].get());
    if (isDone(committed[0].get()) && qstrcmp(status, "COMMIT") == 0)
        return;
    foreseen_.clear();
    requireDone(committed);
    refuse(QString::fromUtf8(status));
}

/// The answers to what goes before the commit; that to the commit itself is left to commit().
PostgresDriver::Results PostgresDriver::commitWith(Bundle work)
{
    const bool settled = settled_ && readsAsTheLayer() && std::ranges::all_of(work, keepsSettings);
    std::vector<Bundle> bundles{std::move(work)};
    bundles[0].push_back(command() << u"COMMIT");
    // Settings of the transaction's own end with it.
    std::vector<Command> next = sendable(behindCommit_, settled);
    for (const Command &one : next)
        bundles.push_back({one});
    std::vector<Results> results = exchange(bundles);
    Result committed = std::move(results[0].back());
    results[0].pop_back();
    requireDone(results[0]); // behind one that failed there was none
    earlyCommit_ = std::move(committed);
    settled_ = false;
    keepForeseen(std::move(next), std::span(results).subspan(1), nullptr);
    return std::move(results[0]);
}

bool PostgresDriver::isFar() const
{
    constexpr qint64 late = 10;
    return quickest_ >= late;
}

void PostgresDriver::rollback()
{
    ahead_.clear();
    earlyCommit_.reset();
    if (holdsTransaction())
        run(QStringLiteral("ROLLBACK"));
}

bool PostgresDriver::holdsTransaction() const
{
    const PGTransactionStatusType status = PQtransactionStatus(session());
    const bool known = status == PQTRANS_INTRANS || status == PQTRANS_INERROR || status == PQTRANS_ACTIVE;
    return !ahead_.empty() || earlyCommit_ || (known && onTheWay_.empty());
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
