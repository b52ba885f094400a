#include "desk/backup/PostgresTool.h"

#include "desk/backup/Refusal.h"
#include "platform/ado/PostgresAddress.h"

#include <QDir>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryFile>

#include <algorithm>

namespace backup {

namespace {

const QString OptionsService = QStringLiteral("desk_options");

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

/// The programs' service file with the options as the service that the connection names.
void writeOptions(QTemporaryFile &file, const QStringList &options)
{
    const QByteArray lines = QStringLiteral("[%1]\n%2\n").arg(OptionsService, options.join(u'\n')).toUtf8();
    if (!file.open() || file.write(lines) != lines.size() || !file.flush())
        refuse(QStringLiteral("파일을 만들 수 없습니다: %1\n%2").arg(file.fileTemplate(), file.errorString()));
}

/// A line of a service file ends with its last sign that is no blank, and there is one service only.
void demandFit(const PostgresPlace &place, bool ownService)
{
    const bool trimmed = std::ranges::any_of(
        place.options, [](const QString &option) { return option.contains(u'\n') || option.back().isSpace(); });
    if (trimmed || (ownService && !place.options.isEmpty()))
        refuse(QStringLiteral(
            "이 주소로는 백업 프로그램을 실행할 수 없습니다. service 옵션이나 PGSERVICE는 다른 옵션과 함께 쓸 수 없고, "
            "옵션의 값은 빈칸으로 끝날 수 없습니다."));
}

QProcessEnvironment environmentFor(const PostgresPlace &place, const QTemporaryFile &options)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    environment.remove(QStringLiteral("LANGUAGE")); // what it says is read here
    // Desks that hold a table for longer than this are not waited for.
    environment.insert(QStringLiteral("PGOPTIONS"), QStringLiteral("-c lock_timeout=15000"));
    if (!place.password.isEmpty())
        environment.insert(QStringLiteral("PGPASSWORD"), place.password);
    if (!place.options.isEmpty())
        environment.insert(QStringLiteral("PGSERVICEFILE"), options.fileName());
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
    static constexpr const char *noSecrets[]{"host",    "hostaddr",    "port",     "dbname",  "user",
                                             "sslmode", "sslrootcert", "passfile", "service", "target_session_attrs"};
    PostgresPlace place;
    QStringList words;
    bool ownService = qEnvironmentVariableIsSet("PGSERVICE");
    for (const auto &[name, value] : ado::postgresParameters(address.section(QStringLiteral("://"), 1))) {
        if (name == QLatin1String("password"))
            place.password = value;
        else if (std::ranges::any_of(noSecrets,
                                     [&name = name](const char *known) { return name == QLatin1String(known); }))
            words << quoted(name, value);
        else
            place.options << name + u'=' + value;
        ownService = ownService || name == QLatin1String("service");
    }
    demandFit(place, ownService);
    if (!place.options.isEmpty())
        words << quoted(QStringLiteral("service"), OptionsService);
    place.connection = words.join(u' ');
    return place;
}

QByteArray runPostgresTool(const QString &program, const QStringList &arguments, const PostgresPlace &place,
                           const Listener &listener, Says says)
{
    QTemporaryFile options;
    if (!place.options.isEmpty())
        writeOptions(options, place.options);
    QProcess process;
    if (says == Says::OnAll)
        process.setProcessChannelMode(QProcess::MergedChannels);
    process.setProcessEnvironment(environmentFor(place, options));
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
