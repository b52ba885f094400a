#include "trials/soak/Soak.h"

#include <QCoreApplication>
#include <QFile>
#include <QThread>

#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <utility>

namespace trial {

namespace {

constexpr qint64 tokensOfADesk = 150'000; ///< three times what a desk needs in an hour; a first payment holds 24 bits

QString gateFile(const Ground &ground)
{
    return ground.folder() + QStringLiteral("/gate");
}

void waitUntil(qint64 moment)
{
    while (now() < moment)
        QThread::msleep(20);
}

} // namespace

Soak::Soak(Ground &ground, PostgresServer *server, int seconds, unsigned seed)
    : ground_(ground)
    , seconds_(seconds)
    , seed_(seed)
    , faults_(server)
    , gate_(gateFile(ground))
{
}

Soak::~Soak()
{
    for (const auto &desk : desks_)
        desk->kill();
    for (const auto &desk : desks_)
        desk->waitForFinished();
}

bool Soak::run()
{
    ground_.leadDesksOver(faults_.way(ground_.address()));
    while (int(desks_.size()) < Desks)
        desks_.push_back(startDesk());
    std::vector<Vitals> parts(Parts);
    printHead();
    const qint64 begun = now();
    qint64 from = begun;
    for (int part = 0; part < Parts; ++part) {
        happen(part, parts[std::size_t(part)].events);
        waitUntil(begun + qint64(seconds_) * 1'000'000 * (part + 1) / Parts);
        for (int desk = 0; desk < Steady; ++desk)
            look(parts[std::size_t(part)], *desks_[std::size_t(desk)]);
        const qint64 to = now();
        count(parts[std::size_t(part)], ground_.readJournals(), std::exchange(from, to), to);
        print(part + 1, parts[std::size_t(part)]);
    }
    endBackup();
    for (const auto &desk : desks_)
        requireEnd(*desk, "a desk");
    const bool flat = printWhetherFlat(parts);
    const bool sound = told(audited());
    return examined() && flat && sound;
}

std::unique_ptr<QProcess> Soak::startDesk()
{
    const qint64 number = started_++;
    return ground_.startDesk(seconds_ * 10, seed_ + unsigned(number), number * tokensOfADesk + 1, 10,
                             {QStringLiteral("--pause"), QStringLiteral("300"), QStringLiteral("--faults"),
                              QStringLiteral("1"), QStringLiteral("--gate"), gateFile(ground_)});
}

void Soak::happen(int part, QString &events)
{
    if (part % 5 == 2) {
        beginBackup();
        events += QStringLiteral("backup, ");
    }
    if (part % 2 == 1)
        restartDesk(part, events);
    if (part % 4 == 0 && part > 0) {
        endBackup(); // a server that restarts ends it, too
        events += faults_.next(*desks_[std::size_t(part % Desks)]) + QStringLiteral(", ");
        ++faultsHappened_;
    }
    if (part == Parts / 2) {
        endBackup();
        restore();
        events += QStringLiteral("restore, ");
    }
    events.chop(2);
}

void Soak::restartDesk(int part, QString &events)
{
    auto &desk = desks_[std::size_t(Steady + part / 2 % (Desks - Steady))];
    const bool killed = part % 4 == 1;
    if (killed)
        desk->kill();
    else
        requireEnd(*desk, "a desk");
    desk->waitForFinished();
    desk = startDesk();
    ++restarts_;
    events += (killed ? QStringLiteral("desk killed, ") : QStringLiteral("desk ended, "));
}

void Soak::requireEnd(QProcess &desk, const char *what)
{
    desk.terminate();
    if (!desk.waitForFinished(60'000) || desk.exitStatus() != QProcess::NormalExit || desk.exitCode() != 0)
        throw std::runtime_error(std::string(what) + " did not end well");
}

void Soak::beginBackup()
{
    endBackup();
    if (backups_ > 0)
        QFile::remove(lastBackup_);
    lastBackup_ = ground_.folder() + QStringLiteral("/%1.backup").arg(++backups_);
    backup_ = std::make_unique<QProcess>();
    backup_->setProcessChannelMode(QProcess::MergedChannels);
    backup_->start(QCoreApplication::applicationDirPath() + QStringLiteral("/desk"),
                   {QStringLiteral("--backup"), lastBackup_, QStringLiteral("--database"), ground_.address()});
}

void Soak::endBackup()
{
    if (!backup_)
        return;
    if (!backup_->waitForFinished(600'000) || backup_->exitCode() != 0)
        throw std::runtime_error("a backup failed: " + backup_->readAll().toStdString());
    backup_.reset();
}

int Soak::command(const QStringList &arguments, QByteArray *said)
{
    QProcess desk;
    desk.setProcessChannelMode(QProcess::MergedChannels);
    desk.start(QCoreApplication::applicationDirPath() + QStringLiteral("/desk"),
               arguments + QStringList{QStringLiteral("--database"), ground_.address()});
    desk.waitForFinished(600'000);
    const QByteArray words = desk.readAll();
    if (said)
        *said = words;
    else
        std::printf("%s", words.constData());
    return desk.exitStatus() == QProcess::NormalExit ? desk.exitCode() : -1;
}

/// Between two visits of every desk; their connections stay open. What was done since the backup is gone, all else is there.
void Soak::restore()
{
    gate_.close();
    beginBackup();
    endBackup();
    doWorkThatIsUndone();
    QByteArray said;
    if (command({QStringLiteral("--restore"), lastBackup_}, &said) != 0)
        throw std::runtime_error("the restore failed: " + said.toStdString());
    const Findings findings = audited();
    gate_.open();
    if (!told(findings))
        throw std::runtime_error("a restore is not what was backed up");
}

void Soak::doWorkThatIsUndone()
{
    const auto desk = ground_.startDesk(2, seed_, started_++ * tokensOfADesk + 1, 0);
    if (!desk->waitForFinished(60'000) || desk->exitCode() != 0)
        throw std::runtime_error("the desk whose work is undone did not end well");
    const std::vector<Deed> deeds = readJournal(ground_.lastJournal(), 0);
    if (std::none_of(deeds.begin(), deeds.end(), [](const Deed &deed) { return deed.state == State::Done; }))
        throw std::runtime_error("nothing was done that a restore could undo");
    ground_.disownLastJournal();
}

Findings Soak::audited() const
{
    std::vector<std::vector<Deed>> journals = ground_.readJournals();
    faults_.forgive(journals);
    Findings findings = ground_.check(journals);
    if (const QString damage = ground_.damage(); !damage.isEmpty())
        findings.faults << QStringLiteral("the file is damaged: ") + damage;
    return findings;
}

/// Totals that a killed desk left are no fault; anything else that the check finds is.
bool Soak::examined()
{
    QByteArray said;
    bool sound = command({QStringLiteral("--check")}, &said) != 2;
    for (const QByteArray &line : said.split('\n')) {
        if (line.startsWith("  위반") && !line.contains("총액이"))
            sound = false;
    }
    std::printf("%s", said.constData());
    const bool restorable = command({QStringLiteral("--verify"), lastBackup_}) != 2;
    return sound && restorable;
}

bool Soak::told(const Findings &findings)
{
    std::printf(
        "\n%d backups, %d faults, %d desks started anew; %d acknowledged, %d refused (%d of them conflicts), %d "
        "unknown, %d half done; %d orders, %d lines, %d ledger rows\n",
        backups_, faultsHappened_, restarts_, findings.acknowledged, findings.refused, findings.conflicts,
        findings.unfinished, findings.halfDone, findings.orders, findings.lines, findings.entries);
    for (const QString &fault : findings.faults.first(std::min<qsizetype>(20, findings.faults.size())))
        std::printf("FAULT: %s\n", qPrintable(fault));
    std::printf("%d lost, doubled or unbalanced\n\n", int(findings.faults.size()));
    std::fflush(stdout);
    return findings.faults.isEmpty() && findings.acknowledged > 0;
}

} // namespace trial
