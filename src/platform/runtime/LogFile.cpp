#include "platform/runtime/LogFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSysInfo>

#include <filesystem>
#include <fstream>

namespace runtime {

namespace {

constexpr QFile::Permissions ownFile = QFile::ReadOwner | QFile::WriteOwner;
constexpr QFile::Permissions ownFolder = ownFile | QFile::ExeOwner;

/// A machine's name fit for that of a file.
QString machine()
{
    static const QRegularExpression other(QStringLiteral("[^A-Za-z0-9.]+"));
    const QString name = QSysInfo::machineHostName().replace(other, QStringLiteral("_"));
    return name.isEmpty() ? QStringLiteral("machine") : name;
}

} // namespace

LogFile::LogFile(const QString &folder, const QString &product, const QByteArray &head)
    : folder_(folder)
    , product_(product)
    , head_(head)
{
}

QString LogFile::nameOf(const QString &product, const QDate &day)
{
    return QStringLiteral("%1-%2-%3.log").arg(product, machine(), day.toString(Qt::ISODate));
}

bool LogFile::begin(const QDateTime &now)
{
    if (day_ == now.date())
        return true;
    if (!QDir().exists(folder_)) {
        QDir().mkpath(QFileInfo(folder_).path());
        QDir().mkdir(folder_, ownFolder);
    }
    deleteOld(now.date());
    if (!append(now, "info zelvo.program: " + head_))
        return false;
    day_ = now.date();
    return true;
}

bool LogFile::write(const QDateTime &now, const QByteArray &line)
{
    return begin(now) && append(now, line);
}

/// Opened for each line, since they are few: a file that somebody takes away or deletes comes back.
bool LogFile::append(const QDateTime &now, const QByteArray &line) const
{
    const QString file = QDir(folder_).filePath(nameOf(product_, now.date()));
    QFile(file).open(QIODevice::WriteOnly | QIODevice::NewOnly, ownFile);
    // At its end, wherever another process has put that meanwhile, and in one piece.
    std::ofstream stream(std::filesystem::path(file.toStdU16String()), std::ios::app | std::ios::binary);
    const QByteArray whole = now.toOffsetFromUtc(now.offsetFromUtc()).toString(Qt::ISODateWithMs).toLatin1() + ' '
                             + QByteArray::number(QCoreApplication::applicationPid()) + ' ' + line + '\n';
    stream.write(whole.constData(), whole.size());
    stream.close();
    return stream.good();
}

void LogFile::deleteOld(const QDate &today) const
{
    const QRegularExpression own(
        QStringLiteral("^%1-[A-Za-z0-9._]+-(\\d{4}-\\d{2}-\\d{2})\\.log$").arg(QRegularExpression::escape(product_)));
    QDir folder(folder_);
    const QStringList names = folder.entryList(QDir::Files | QDir::NoSymLinks | QDir::Hidden);
    for (const QString &name : names) {
        const QDate day = QDate::fromString(own.match(name).captured(1), Qt::ISODate);
        if (day.isValid() && day.daysTo(today) >= DaysKept)
            folder.remove(name);
    }
}

} // namespace runtime
