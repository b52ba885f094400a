#pragma once

#include <QByteArray>
#include <QDate>
#include <QDateTime>
#include <QString>

namespace runtime {

/// One product's log in a folder: a file for each day and machine, "PRODUCT-MACHINE-2026-11-25.log", that several processes
/// write to. Only the user reads and writes it.
class LogFile
{
public:
    /// Whoever looks after a clinic hears of a fault within two weeks, or never.
    static constexpr int DaysKept = 14;

    /// `head` is the first line of this process in each file.
    LogFile(const QString &folder, const QString &product, const QByteArray &head);

    /// Sees to it that the day has its file, and this process its first line in it. At the turn of a day files of days long
    /// past are deleted, and nothing else. False where the file cannot be written.
    bool begin(const QDateTime &now);
    /// Appends the line, whole beside those of other processes; the day is begun where it is not.
    bool write(const QDateTime &now, const QByteArray &line);

    static QString nameOf(const QString &product, const QDate &day);

private:
    bool append(const QDateTime &now, const QByteArray &line) const;
    void deleteOld(const QDate &today) const;

    const QString folder_;
    const QString product_;
    const QByteArray head_;
    QDate day_;
};

} // namespace runtime
