#pragma once

#include "desk/schema/Tables.h"

#include <QStringList>

/// The journal beside the clinic's tables, `t_DeskJournal`: the database itself writes down every order, line and ledger
/// row that comes, changes or goes, in the same transaction, whichever program wrote it.
namespace schema {

/// A table that is journalled, and its columns that tell whose row it is; empty where it has none.
struct JournalPlan
{
    const char *table;
    const char *order;
    const char *customer;
};
std::span<const JournalPlan> journalPlans();
const TablePlan &tableOf(const JournalPlan &plan);

/// The row called `row` ("NEW", "t") as the journal keeps it: a JSON object of the clinic's columns, other programs' left
/// out.
QString journalledRow(const TablePlan &table, const QString &row, Dialect dialect);

struct JournalTrigger
{
    QString name;
    QString table;
    QString statement;
};

QStringList journalTableStatements(Dialect dialect);
/// The condition of the rows that are not sealed yet. In a file writers follow one another, so these are the last ones.
QString journalOpenRows(Dialect dialect);
/// What the triggers of a server call; none on the embedded engine.
QStringList journalFunctionStatements();
/// Those that write the journal and those that keep it from being changed.
std::vector<JournalTrigger> journalTriggers(Dialect dialect);
/// The highest keys as they stand when the journal begins: rows above them must be in it.
QStringList journalBeginStatements(Dialect dialect);

/// On a server a session holds this lock while it adds to the chain.
inline constexpr qint64 JournalLock = 7'310'579'163;
/// Rows that get their place in one transaction: a blink of an eye.
inline constexpr int SealedAtOnce = 500;

} // namespace schema
