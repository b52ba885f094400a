#pragma once

#include "trials/failover/Server.h"
#include "trials/failover/Site.h"
#include "trials/ground/Ground.h"

#include <random>

namespace trial {

enum class Kind { Killed, Cut, Full };

/// What one failover, or all of a kind, came to.
struct Result
{
    int failovers = 0;
    int acknowledged = 0;
    int unknown = 0;          ///< what was in the middle, and told so
    std::vector<double> back; ///< seconds from the promotion until a desk had its next operation acknowledged
    int oldTried = 0;         ///< operations begun at the old primary while the new one wrote
    int oldAcknowledged = 0;
    QStringList faults;
};

/// Desks trade on a first server that a second one follows synchronously; the first is lost, the second promoted, and the first
/// comes back as it was.
class Failover
{
public:
    Failover(const Site &site, const QString &folder, const Server &model, Kind kind, unsigned seed);
    ~Failover();

    void run(int desks, Site &site, Result &result);

private:
    void startServers(const Server &model);
    std::vector<std::unique_ptr<QProcess>> openDesks(int desks);
    void loseFirst(Site &site);
    void promoteSecond();
    void awaitDesks(Result &result);
    void firstComesBack(Site &site, Result &result);
    void audit(Result &result);
    int roll(int from, int to) { return from + int(random_() % unsigned(to - from)); }

    const Kind kind_;
    std::mt19937 random_;
    QString folder_;
    Server first_;
    Server second_;
    std::unique_ptr<Ground> ground_;
    int started_ = 0; ///< desks
    qint64 lost_ = 0;
    qint64 promoted_ = 0;
    qint64 worked_ = 0; ///< when the last desk was back
};

} // namespace trial
