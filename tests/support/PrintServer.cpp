#include "tests/support/PrintServer.h"

#include "tests/support/Statements.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QThread>

#include <csignal>
#include <stdexcept>
#include <unistd.h>

namespace {

constexpr int patience = 20'000; // milliseconds

QString serverFolder()
{
    return QDir::tempPath() + QStringLiteral("/print-server-%1").arg(getpid());
}

void write(const QString &name, const QString &text)
{
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0)
        throw std::runtime_error("cannot write " + name.toStdString());
}

QString printerDescription(const PrintServer::Queue &queue, const QString &pass)
{
    QStringList sizes, areas, dimensions;
    for (const int length : queue.lengths) {
        const QString name = QStringLiteral("W%1H%2").arg(queue.width).arg(length);
        sizes << QStringLiteral("*%1 %2: \"<</PageSize[%3 %4]>>setpagedevice\"")
                     .arg(QStringLiteral("OPTION"), name)
                     .arg(queue.width)
                     .arg(length);
        areas << QStringLiteral("*ImageableArea %1: \"%2 %2 %3 %4\"")
                     .arg(name)
                     .arg(queue.edge)
                     .arg(queue.width - queue.edge)
                     .arg(length - queue.edge);
        dimensions << QStringLiteral("*PaperDimension %1: \"%2 %3\"").arg(name).arg(queue.width).arg(length);
    }
    const auto lines = [](const QStringList &list) { return list.join(QLatin1Char('\n')); };
    QString text = textOf("support/printer.ppd");
    text.replace(QStringLiteral("%filter"),
                 queue.raster
                     ? QStringLiteral("*cupsFilter: \"application/vnd.cups-raster 0 rastertopdf\"")
                     : QStringLiteral("*cupsFilter2: \"application/vnd.cups-pdf application/pdf 0 %1\"").arg(pass));
    text.replace(QStringLiteral("%default"), QStringLiteral("W%1H%2").arg(queue.width).arg(queue.lengths.front()));
    for (const char *option : {"PageSize", "PageRegion"})
        text.replace(QLatin1Char('%') + QLatin1String(option),
                     lines(sizes).replace(QStringLiteral("OPTION"), QLatin1String(option)));
    text.replace(QStringLiteral("%ImageableArea"), lines(areas));
    text.replace(QStringLiteral("%PaperDimension"), lines(dimensions));
    QString custom;
    if (queue.longest > 0)
        custom = QStringLiteral("*VariablePaperSize: True\n*MaxMediaWidth: \"%1\"\n*MaxMediaHeight: \"%2\"\n"
                                "*HWMargins: %3 %3 %3 %3\n"
                                "*CustomPageSize True: \"pop pop pop <</PageSize[5 -2 roll]>>setpagedevice\"\n"
                                "*ParamCustomPageSize Width: 1 points 30 %1\n"
                                "*ParamCustomPageSize Height: 2 points 30 %2\n"
                                "*ParamCustomPageSize WidthOffset: 3 points 0 0\n"
                                "*ParamCustomPageSize HeightOffset: 4 points 0 0\n"
                                "*ParamCustomPageSize Orientation: 5 int 0 0")
                     .arg(queue.width)
                     .arg(queue.longest)
                     .arg(queue.edge);
    return text.replace(QStringLiteral("%custom"), custom);
}

} // namespace

bool PrintServer::keepApart()
{
    return qputenv("CUPS_SERVER", serverFolder().toLocal8Bit() + "/cups.sock");
}

PrintServer::PrintServer()
    : folder_(serverFolder())
{
    configure();
    start();
    add({.name = pagePrinter, .width = 595, .lengths = {842}});
    add({.name = rollPrinter, .width = 227, .lengths = {842}, .longest = 14400});
    admin({QStringLiteral("lpadmin"), QStringLiteral("-d"), pagePrinter});
}

PrintServer::~PrintServer()
{
    ::kill(pid_t(server_->processId()), SIGTERM);
    if (!server_->waitForFinished(5'000))
        server_->kill();
    folder_.removeRecursively();
}

void PrintServer::configure()
{
    for (const char *name : {"spool", "cache", "state", "tmp", "root", "root/ppd", "jobs"})
        QDir().mkpath(file(QLatin1String(name)));
    // The server drops root for its helpers, which need to reach the folder and its job files. What it runs must stand in
    // a folder that only its owner can write.
    const QFile::Permissions all(0x7777);
    const QFile::Permissions program = QFile::Permissions(0x5555) | QFile::WriteOwner;
    QFile::setPermissions(folder_.path(), program);
    for (const char *name : {"jobs", "tmp"})
        QFile::setPermissions(file(QLatin1String(name)), all);
    write(file(QStringLiteral("root/pass")), QStringLiteral("#!/bin/sh\nexec cat ${6:+\"$6\"}\n"));
    QFile::setPermissions(file(QStringLiteral("root/pass")), program);
    write(file(QStringLiteral("cups-files.conf")),
          QStringLiteral(
              "ServerRoot %1/root\nRequestRoot %1/spool\nCacheDir %1/cache\nStateDir %1/state\nTempDir %1/tmp\n"
              "AccessLog %1/access.log\nErrorLog %1/error.log\nPageLog %1/page.log\nFileDevice Yes\n"
              "ConfigFilePerm 0644\nSystemGroup root\nSandboxing relaxed\n")
              .arg(folder_.path()));
    write(file(QStringLiteral("cupsd.conf")),
          QStringLiteral("LogLevel info\nListen %1/cups.sock\nBrowsing No\nDefaultAuthType None\nWebInterface No\n"
                         "<Location />\nOrder allow,deny\nAllow all\n</Location>\n"
                         "<Location /admin>\nOrder allow,deny\nAllow all\n</Location>\n"
                         "<Policy default>\n<Limit All>\nOrder allow,deny\nAllow all\n</Limit>\n</Policy>\n")
              .arg(folder_.path()));
}

void PrintServer::start()
{
    server_ = std::make_unique<QProcess>();
    server_->setProcessChannelMode(QProcess::MergedChannels);
    // A test program that dies takes its server along.
    server_->start(QStringLiteral("setpriv"),
                   {QStringLiteral("--pdeathsig"), QStringLiteral("TERM"), QStringLiteral("/usr/sbin/cupsd"),
                    QStringLiteral("-f"), QStringLiteral("-c"), file(QStringLiteral("cupsd.conf")),
                    QStringLiteral("-s"), file(QStringLiteral("cups-files.conf"))});
    QElapsedTimer waited;
    waited.start();
    QProcess ready;
    while (waited.elapsed() < patience && server_->state() != QProcess::NotRunning) {
        ready.start(QStringLiteral("lpstat"), {QStringLiteral("-r")});
        ready.waitForFinished(patience);
        if (ready.readAllStandardOutput().contains("is running"))
            return;
        QThread::msleep(50);
    }
    throw std::runtime_error("the print server does not start: " + server_->readAll().toStdString());
}

void PrintServer::admin(const QStringList &arguments) const
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QStringLiteral("/usr/sbin/") + arguments.first(), arguments.mid(1));
    if (!process.waitForFinished(patience) || process.exitCode() != 0)
        throw std::runtime_error(arguments.join(QLatin1Char(' ')).toStdString() + ": "
                                 + process.readAll().toStdString());
}

void PrintServer::add(const Queue &queue)
{
    const QString ppd = file(queue.name + QStringLiteral(".ppd"));
    write(ppd, printerDescription(queue, file(QStringLiteral("root/pass"))));
    admin({QStringLiteral("lpadmin"), QStringLiteral("-p"), queue.name, QStringLiteral("-E"), QStringLiteral("-v"),
           QStringLiteral("file:") + file(QStringLiteral("jobs/") + queue.name), QStringLiteral("-P"), ppd});
}

void PrintServer::remove(const QString &printer)
{
    admin({QStringLiteral("lpadmin"), QStringLiteral("-x"), printer});
}

QString PrintServer::job(const QString &printer) const
{
    const QString name = file(QStringLiteral("jobs/") + printer);
    QElapsedTimer waited;
    waited.start();
    while (waited.elapsed() < patience) {
        QProcess idle;
        idle.start(QStringLiteral("lpstat"), {QStringLiteral("-o"), printer});
        idle.waitForFinished(patience);
        if (QFile(name).size() > 0 && idle.readAllStandardOutput().trimmed().isEmpty())
            return name;
        QThread::msleep(50);
    }
    QFile log(file(QStringLiteral("error.log")));
    throw std::runtime_error(
        "no job came" + std::string(log.open(QIODevice::ReadOnly) ? log.readAll().right(2000).toStdString() : ""));
}
