#include "trials/ground/Ground.h"

#include "desk/backup/Backup.h"
#include "tests/support/MariaDbServer.h"
#include "tests/support/PostgresServer.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <cstdio>
#include <stdexcept>

namespace trial {

namespace {

bool tell(qint64 done, qint64 total)
{
    if (total >= 10'000 && done % (total / 10) == 0)
        std::fprintf(stderr, "orders made: %lld of %lld\n", static_cast<long long>(done),
                     static_cast<long long>(total));
    return true;
}

QString firstValue(const ado::Connection &clinic, const char *select)
{
    return clinic.read(QLatin1String(select)).raw(0, 0).toString();
}

} // namespace

Ground::Ground(ado::Engine engine, sample::Size size, PostgresServer *server, const QString &place)
    : folder_(QCoreApplication::applicationDirPath() + QStringLiteral("/trial-XXXXXX"))
    , engine_(engine)
{
    if (engine == ado::Engine::MariaDB && place.isEmpty())
        mariaDb_ = std::make_unique<MariaDbServer>(MariaDbServer::Writing::Durable);
    address_ = !place.isEmpty() ? place
               : engine == ado::Engine::SQLite
                   ? QStringLiteral("sqlite:") + folder_.filePath(QStringLiteral("clinic.db"))
               : mariaDb_ ? mariaDb_->address(mariaDb_->createDatabase())
                          : server->postgresAddress(server->createDatabase());
    deskAddress_ = address_;
    sample::makeClinic(address_, size, tell);
    const ado::ConnectionPtr clinic = ado::Connection::open(address_);
    if (engine == ado::Engine::PostgreSQL) // as a server does by itself some time after so much was written
        clinic->Execute(QStringLiteral("VACUUM ANALYZE"));
    look(*clinic);
}

Ground::Ground(const QString &clinic)
    : folder_(QCoreApplication::applicationDirPath() + QStringLiteral("/trial-XXXXXX"))
    , engine_(ado::Engine::PostgreSQL)
    , address_(clinic)
    , deskAddress_(clinic)
{
    look(*ado::Connection::open(clinic));
}

void Ground::look(const ado::Connection &clinic)
{
    patients_ = firstValue(clinic, "SELECT MAX(Customer_PK) FROM Customer").toInt();
    before_ = trial::before(clinic);
}

Ground::~Ground() = default;

QString Ground::damage() const
{
    if (engine_ != ado::Engine::SQLite)
        return {};
    const QString verdict = firstValue(*ado::Connection::open(address_), "PRAGMA integrity_check");
    return verdict == QLatin1String("ok") ? QString() : verdict;
}

std::unique_ptr<QProcess> Ground::startDesk(int seconds, unsigned seed, qint64 firstToken, int crowding,
                                            const QStringList &more)
{
    const std::pair<const char *, qint64> options[] = {{"--seconds", seconds},
                                                       {"--seed", seed},
                                                       {"--token", firstToken},
                                                       {"--before", before_.lastOrder},
                                                       {"--products", before_.lastProduct},
                                                       {"--patients", patients_},
                                                       {"--crowding", crowding}};
    journals_ << folder_.filePath(QStringLiteral("desk-%1.journal").arg(started_++));
    QStringList arguments = QStringList{deskAddress_, journals_.last()} + more;
    for (const auto &[name, value] : options)
        arguments << QLatin1String(name) << QString::number(value);
    auto desk = std::make_unique<QProcess>();
    desk->setProcessChannelMode(QProcess::ForwardedChannels);
    desk->start(QCoreApplication::applicationDirPath() + QStringLiteral("/trial_worker"), arguments);
    if (!desk->waitForStarted())
        throw std::runtime_error("a desk does not start");
    return desk;
}

void Ground::backUp() const
{
    backup::backUp(address_, folder_.filePath(QStringLiteral("clinic.backup")));
}

void Ground::restore(const QStringList &forgotten)
{
    backup::restore(address_, folder_.filePath(QStringLiteral("clinic.backup")));
    for (const QString &journal : forgotten)
        journals_.removeOne(journal);
}

std::vector<std::vector<Deed>> Ground::readJournals() const
{
    std::vector<std::vector<Deed>> read;
    for (const QString &file : journals_)
        read.push_back(readJournal(file, int(read.size())));
    return read;
}

Findings Ground::check() const
{
    return check(readJournals());
}

Findings Ground::check(const std::vector<std::vector<Deed>> &journals) const
{
    return check(journals, address_);
}

Findings Ground::check(const std::vector<std::vector<Deed>> &journals, const QString &address) const
{
    return audit(*ado::Connection::open(address), before_, journals);
}

} // namespace trial
