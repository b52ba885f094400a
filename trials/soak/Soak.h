#pragma once

#include "trials/ground/Ground.h"
#include "trials/soak/Faults.h"
#include "trials/soak/Vitals.h"

#include "trials/desk/Gate.h"

namespace trial {

/// Six desks in a long day: three work from its beginning to its end, of the others one is ended or killed every other part
/// and started anew. Sixty parts, an hour's are minutes: a backup in every fifth, a fault in every fourth, a restore in the
/// middle.
class Soak
{
public:
    Soak(Ground &ground, PostgresServer *server, int seconds, unsigned seed);
    ~Soak();

    /// Prints a row for each part, then what was found. True when nothing was.
    bool run();

private:
    static constexpr int Parts = 60;
    static constexpr int Steady = 3;
    static constexpr int Desks = 6;

    std::unique_ptr<QProcess> startDesk();
    void happen(int part, QString &events);
    void restartDesk(int part, QString &events);
    void beginBackup();
    void endBackup();
    void restore();
    void doWorkThatIsUndone();
    void requireEnd(QProcess &desk, const char *what);
    int command(const QStringList &arguments, QByteArray *said = nullptr);
    Findings audited() const;
    bool examined();
    bool told(const Findings &findings);

    Ground &ground_;
    const int seconds_;
    const unsigned seed_;
    Faults faults_;
    Gate gate_;
    std::vector<std::unique_ptr<QProcess>> desks_;
    std::unique_ptr<QProcess> backup_;
    QString lastBackup_;
    qint64 started_ = 0; ///< desks, those that ended too
    int backups_ = 0;
    int restarts_ = 0;
    int faultsHappened_ = 0;
};

} // namespace trial
