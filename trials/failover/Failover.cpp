#include "trials/failover/Failover.h"

#include <QDir>
#include <QFile>
#include <QThread>

#include <algorithm>
#include <csignal>
#include <stdexcept>

namespace trial {

namespace {

const QStringList firstSettings{QStringLiteral("synchronous_standby_names=second")};
constexpr int limit = 40'000; ///< ms within which every desk has to be back

void mountSmall(const QString &folder)
{
    run({QStringLiteral("mount"), QStringLiteral("-t"), QStringLiteral("tmpfs"), QStringLiteral("-o"),
         QStringLiteral("size=128m"), QStringLiteral("none"), folder});
    run({QStringLiteral("chown"), QStringLiteral("postgres"), folder});
}

void fillUp(const QString &folder)
{
    QFile rest(folder + QStringLiteral("/rest"));
    const QByteArray block(4096, 'x');
    if (!rest.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        throw std::runtime_error("the disk cannot be filled");
    while (rest.write(block) == block.size())
        ;
}

void waitUntil(const std::function<bool()> &happened, const char *what)
{
    for (const qint64 until = now() + qint64(limit) * 1000; now() < until;) {
        if (happened())
            return;
        QThread::msleep(20);
    }
    throw std::runtime_error(what);
}

bool isFollowed(const Server &first)
{
    return ado::Connection::open(first.address())
               ->read(QStringLiteral("SELECT COUNT(*) FROM pg_stat_replication WHERE sync_state = 'sync'"))
               .raw(0, 0)
               .toInt()
           == 1;
}

QString eitherOf(const Server &first, const Server &second)
{
    return QStringLiteral("postgresql://clinic@%1,%2/clinic?target_session_attrs=read-write")
        .arg(first.host(), second.host());
}

} // namespace

Failover::Failover(const Site &site, const QString &folder, const Server &model, Kind kind, unsigned seed)
    : kind_(kind)
    , random_(seed)
    , folder_(folder)
    , first_(folder + QStringLiteral("/first"), Site::first(), site.atFirst())
    , second_(folder + QStringLiteral("/second"), Site::second())
{
    startServers(model);
}

Failover::~Failover()
{
    first_.kill();
    second_.kill();
    if (kind_ == Kind::Full)
        QProcess::execute(QStringLiteral("umount"),
                          {QStringLiteral("--lazy"), first_.folder()}); // some may still be ending
    for (const Server *server : {&first_, &second_})
        QDir(server->folder()).removeRecursively();
}

void Failover::startServers(const Server &model)
{
    if (kind_ == Kind::Full)
        mountSmall(first_.folder());
    first_.copyFrom(model);
    second_.copyFrom(model);
    second_.follow(first_);
    first_.start(firstSettings);
    second_.start();
    waitUntil([this] { return isFollowed(first_); }, "the second server does not follow");
    ground_ = std::make_unique<Ground>(eitherOf(first_, second_));
}

void Failover::run(int desks, Site &site, Result &result)
{
    const auto trading = openDesks(desks);
    QThread::msleep(unsigned(roll(300, 1500)));
    loseFirst(site);
    promoteSecond();
    awaitDesks(result);
    firstComesBack(site, result);
    for (const auto &desk : trading)
        desk->terminate();
    for (const auto &desk : trading) {
        if (!desk->waitForFinished(limit) || desk->exitCode() != 0)
            result.faults << QStringLiteral("a desk did not end by itself");
    }
    audit(result);
}

std::vector<std::unique_ptr<QProcess>> Failover::openDesks(int desks)
{
    std::vector<std::unique_ptr<QProcess>> opened;
    for (int desk = 0; desk < desks; ++desk)
        opened.push_back(ground_->startDesk(600, random_(), 1'000'000 * started_++ + 1, 5,
                                            {QStringLiteral("--faults"), QStringLiteral("1")}));
    const auto allTrade = [this] {
        const auto journals = ground_->readJournals();
        return std::ranges::all_of(journals, [](const auto &journal) {
            return std::ranges::any_of(journal, [](const Deed &deed) { return deed.state == State::Done; });
        });
    };
    waitUntil(allTrade, "a desk does not begin to work");
    return opened;
}

void Failover::loseFirst(Site &site)
{
    lost_ = now();
    switch (kind_) {
    case Kind::Killed:
        first_.kill();
        QThread::msleep(unsigned(roll(0, 1500))); // until somebody promotes the other
        break;
    case Kind::Cut:
        site.pullCable();
        QThread::msleep(unsigned(roll(0, 12'000)));
        break;
    case Kind::Full:
        fillUp(first_.folder());
        QThread::msleep(unsigned(roll(1000, 4000)));
        first_.kill(); // who promotes the other takes this one away
        break;
    }
}

void Failover::promoteSecond()
{
    second_.promote();
    promoted_ = now();
}

/// Desks are back one by one, as each notices.
void Failover::awaitDesks(Result &result)
{
    std::vector<double> back;
    waitUntil(
        [&] {
            back.clear();
            for (const auto &journal : ground_->readJournals()) {
                const auto next = std::ranges::find_if(
                    journal, [this](const Deed &deed) { return deed.state == State::Done && deed.begun > promoted_; });
                if (next == journal.end())
                    return false;
                back.push_back(double(next->ended - promoted_) / 1e6);
            }
            return true;
        },
        "a desk does not come back");
    worked_ = now();
    result.back.insert(result.back.end(), back.begin(), back.end());
}

/// Just as it was, with nobody who told it: a desk that finds only this one must not be told that anything is saved.
void Failover::firstComesBack(Site &site, Result &result)
{
    if (kind_ == Kind::Full)
        QFile::remove(first_.folder() + QStringLiteral("/rest"));
    if (kind_ == Kind::Cut) {
        site.mendCable();
        first_.awaitAnswer();
    } else {
        first_.start(firstSettings);
    }
    ground_->leadDesksOver(first_.address());
    const auto astray = ground_->startDesk(600, random_(), 1'000'000 * started_++ + 1, 0,
                                           {QStringLiteral("--faults"), QStringLiteral("1")});
    const QString journal = ground_->lastJournal();
    const auto deeds = [&] { return readJournal(journal, 0); };
    waitUntil([&] { return !deeds().empty(); }, "the old server lets nobody begin");
    QThread::msleep(1500);
    astray->kill();
    astray->waitForFinished();
    result.oldTried += int(deeds().size());
    result.oldAcknowledged +=
        int(std::ranges::count_if(deeds(), [](const Deed &deed) { return deed.state == State::Done; }));
    ground_->disownLastJournal();
}

void Failover::audit(Result &result)
{
    auto journals = ground_->readJournals();
    for (auto &journal : journals) {
        for (Deed &deed : journal) { // refused meanwhile, it may have been saved, and the desk said so
            if (deed.state == State::Refused && deed.begun < worked_ && deed.ended > lost_) {
                deed.state = State::Open;
                ++result.unknown;
            }
        }
    }
    const Findings findings = ground_->check(journals, second_.address());
    ++result.failovers;
    result.acknowledged += findings.acknowledged;
    result.faults << findings.faults;
}

} // namespace trial
