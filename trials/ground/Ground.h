#pragma once

#include "desk/sample/Clinic.h"
#include "trials/audit/Audit.h"
#include "trials/desk/Clerk.h"

#include <QProcess>
#include <QTemporaryDir>

#include <memory>

class MariaDbServer;
class PostgresServer;

/// What a trial stands on: a clinic on a throw-away server or in a file, desks that work on it, and their journals.
namespace trial {

class Ground
{
public:
    /// Makes the clinic, which takes minutes for a large one, in an empty database where its place is given. Raises.
    Ground(ado::Engine engine, sample::Size size, PostgresServer *server, const QString &place = {});
    /// On a clinic that is there.
    explicit Ground(const QString &clinic);
    ~Ground();
    Ground(const Ground &) = delete;
    Ground &operator=(const Ground &) = delete;

    const QString &address() const { return address_; }
    int patients() const { return patients_; }
    /// Says whether the engine itself finds the database sound; empty when it does.
    QString damage() const;

    /// Desks that are started from now on reach the clinic by this address.
    void leadDesksOver(const QString &address) { deskAddress_ = address; }
    /// Starts a desk that works for so many seconds; its journal is the next one. More goes to its program as it stands.
    std::unique_ptr<QProcess> startDesk(int seconds, unsigned seed, qint64 firstToken, int crowding,
                                        const QStringList &more = {});
    QString lastJournal() const { return journals_.last(); }
    const QStringList &journals() const { return journals_; }
    /// What is in it counts no more; its rows must not stand.
    void disownLastJournal() { journals_.removeLast(); }
    QString folder() const { return folder_.path(); }
    std::vector<std::vector<Deed>> readJournals() const;
    /// Copies the clinic, and puts the copy back: what the desks of those journals did since is then forgotten.
    void backUp() const;
    void restore(const QStringList &forgotten);
    Findings check() const;
    Findings check(const std::vector<std::vector<Deed>> &journals) const;
    /// At the server that holds the clinic now.
    Findings check(const std::vector<std::vector<Deed>> &journals, const QString &address) const;

private:
    void look(const ado::Connection &clinic);

    QTemporaryDir folder_;
    ado::Engine engine_;
    std::unique_ptr<MariaDbServer> mariaDb_;
    QString address_;
    QString deskAddress_;
    int patients_ = 0;
    Before before_;
    QStringList journals_;
    int started_ = 0;
};

} // namespace trial
