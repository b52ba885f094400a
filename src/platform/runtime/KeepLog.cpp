#include "platform/runtime/Log.h"
#include "platform/runtime/LogFile.h"
#include "platform/runtime/LogText.h"

#include <QDir>
#include <QMutex>
#include <QStandardPaths>
#include <QTextStream>

#include <memory>
#include <utility>

namespace runtime {

namespace {

/// Never destroyed: whoever goes last may still have something to say.
struct Keeper
{
    QMutex mutex;
    std::unique_ptr<LogFile> file;
    QString folder;
    bool complained = false;
    QtMessageHandler earlier = nullptr;
    bool earlierIsQts = false; ///< what stands in the file need not stand on the terminal as well
};

Keeper &keeper()
{
    static auto *const only = new Keeper;
    return *only;
}

const char *levelOf(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return "debug";
    case QtInfoMsg:
        return "info";
    case QtWarningMsg:
        return "warning";
    case QtCriticalMsg:
    case QtFatalMsg:
        break;
    }
    return "critical";
}

bool isOurs(const QMessageLogContext &context)
{
    return QByteArray(context.category).startsWith("zelvo.");
}

/// Hands a line to the file; where that cannot be written, the terminal hears of it once.
template <typename Write>
bool kept(Write write)
{
    Keeper &log = keeper();
    const QMutexLocker lock(&log.mutex);
    if (write(*log.file, QDateTime::currentDateTime()))
        return true;
    if (!std::exchange(log.complained, true))
        QTextStream(stderr) << QStringLiteral("오류 기록 파일을 쓸 수 없습니다. 폴더의 권한을 확인하십시오: ")
                            << log.folder << Qt::endl;
    return false;
}

void handle(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    const Keeper &log = keeper();
    const auto write = [&](LogFile &file, const QDateTime &now) {
        return file.write(now, QByteArray(levelOf(type)) + ' ' + context.category + ": " + oneLine(message));
    };
    if (!isOurs(context) || !kept(write) || !log.earlierIsQts)
        log.earlier(type, context, message);
}

} // namespace

QString logFolder(const QString &product)
{
#ifdef Q_OS_UNIX
    const QString asked = qEnvironmentVariable("XDG_STATE_HOME");
    const QString state = QDir::isAbsolutePath(asked) ? asked : QDir::home().filePath(QStringLiteral(".local/state"));
#else
    const QString state = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
#endif
    return QDir(state).filePath(product);
}

QString logFile(const QString &product)
{
    return QDir(logFolder(product)).filePath(LogFile::nameOf(product, QDate::currentDate()));
}

void keepLog(const LogOwner &owner)
{
    sayErrors();
    Keeper &log = keeper();
    const QByteArray head =
        oneLine(QStringLiteral("%1 %2, Qt %3, database %4")
                    .arg(owner.product, owner.version, QString::fromLatin1(qVersion()), owner.database));
    {
        const QMutexLocker lock(&log.mutex);
        log.folder = logFolder(owner.product);
        log.file = std::make_unique<LogFile>(log.folder, owner.product, head);
    }
    if (!log.earlier) {
        log.earlier = qInstallMessageHandler(nullptr);
        log.earlierIsQts = qInstallMessageHandler(nullptr) == log.earlier;
        qInstallMessageHandler(&handle);
    }
    kept([](LogFile &file, const QDateTime &now) { return file.begin(now); });
}

} // namespace runtime
