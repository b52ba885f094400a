#include "desk/backup/PostgresTool.h"

#include "desk/backup/Refusal.h"
#include "platform/ado/PostgresAddress.h"

#include <QDir>
#include <QProcess>
#include <QStandardPaths>

#include <algorithm>

namespace backup {

namespace {

/// The one on the search path, else the newest of the server's own folders.
QString programFile(const QString &name)
{
    const QString found = QStandardPaths::findExecutable(name);
    if (!found.isEmpty())
        return found;
    const QDir versions(QStringLiteral("/usr/lib/postgresql"));
    QStringList folders = versions.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    std::ranges::sort(folders, [](const QString &a, const QString &b) { return a.toInt() > b.toInt(); });
    for (const QString &folder : folders) {
        const QString file = versions.filePath(folder + QStringLiteral("/bin/") + name);
        if (QFile::exists(file))
            return file;
    }
    refuse(QStringLiteral("PostgreSQL의 %1 프로그램이 없습니다. PostgreSQL 클라이언트를 설치하십시오.").arg(name));
}

QProcessEnvironment environmentFor(const PostgresPlace &place)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    environment.remove(QStringLiteral("LANGUAGE")); // what it says is read here
    // Desks that hold a table for longer than this are not waited for.
    environment.insert(QStringLiteral("PGOPTIONS"), QStringLiteral("-c lock_timeout=15000"));
    if (!place.password.isEmpty())
        environment.insert(QStringLiteral("PGPASSWORD"), place.password);
    return environment;
}

QString quoted(const QString &name, QString value)
{
    value.replace(u'\\', QStringLiteral("\\\\")).replace(u'\'', QStringLiteral("\\'"));
    return QStringLiteral("%1='%2'").arg(name, value);
}

} // namespace

PostgresPlace PostgresPlace::of(const QString &address)
{
    PostgresPlace place;
    QStringList words;
    for (const auto &[name, value] : ado::postgresParameters(address.section(QStringLiteral("://"), 1))) {
        if (name == QLatin1String("password"))
            place.password = value;
        else
            words << quoted(name, value);
    }
    place.connection = words.join(u' ');
    return place;
}

QByteArray runPostgresTool(const QString &program, const QStringList &arguments, const PostgresPlace &place,
                           const Listener &listener, Says says)
{
    QProcess process;
    if (says == Says::OnAll)
        process.setProcessChannelMode(QProcess::MergedChannels);
    process.setProcessEnvironment(environmentFor(place));
    process.start(programFile(program), arguments);
    QByteArray output;
    QStringList lastWords;
    bool stopped = false;
    const auto listen = [&] {
        if (says == Says::OnErrors) {
            output += process.readAllStandardOutput();
            process.setReadChannel(QProcess::StandardError);
        }
        while (process.canReadLine()) {
            const QString line = QString::fromUtf8(process.readLine()).trimmed();
            lastWords << line;
            if (listener && !listener(line))
                stopped = true;
        }
        while (lastWords.size() > 5)
            lastWords.removeFirst();
    };
    while (process.state() != QProcess::NotRunning) {
        process.waitForFinished(50);
        listen();
        if (stopped || (listener && !listener(QString()))) {
            stopped = true;
            process.terminate();
            process.waitForFinished(10'000);
        }
    }
    listen();
    const bool well = process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    // Ctrl+C on a terminal reaches the program by itself, too.
    if (!well && (stopped || (listener && !listener(QString()))))
        stop();
    if (!well)
        refuse(QStringLiteral("%1 작업이 실패했습니다.\n%2").arg(program, lastWords.join(u'\n')));
    return output;
}

} // namespace backup
