#pragma once

#include "platform/ado/Connection.h"

#include <QDateTime>
#include <QJsonObject>

#include <vector>

namespace journal {

/// What happened to one row of an order, its lines or its ledger; or to all of them, by the restore of a backup.
struct Entry
{
    QDateTime time; ///< of this machine
    QString who;    ///< empty where it could not be known
    char action = 0;
    QString table;
    QString order; ///< their keys; empty where the row names none
    QString customer;
    QJsonObject before;
    QJsonObject after;
};

inline constexpr int MostEntries = 2'000;

// The newest first, at most MostEntries. Raise RuntimeError.
/// Everything that happened to the orders and the money of a patient, deleted ones included.
std::vector<Entry> entriesOfCustomer(ado::Connection &connection, qint64 customer);
/// What was changed or deleted on a day of this machine.
std::vector<Entry> changesOfDay(ado::Connection &connection, const QDate &day);

/// "판매총액 ₩10,000 → ₩12,000 · 메모 ...": the fields that are not as before, under the names that the sale window has
/// for them.
QString changesText(const Entry &entry);
QString actionText(char action);
QString tableText(const QString &table);

} // namespace journal
