#pragma once

#include "platform/ado/Connection.h"
#include "platform/ado/SqlText.h"

#include <QStringList>

class QSqlDatabase;

namespace ado {

/// What the kinds of servers behind ODBC are told and asked, each in its own words.
struct OdbcServer
{
    Engine engine;
    Dialect dialect;
    /// The connection string with what it does not settle itself, and without what would undo the layer's guard.
    QString (*completed)(const QString &connectionString);
    /// Settings by which literals are read as the layer reads them, and signs of a statement that others read otherwise.
    QStringList reading;
    QStringView readOtherwise;
    QString askReading; ///< gives 1 while they hold
    /// What else a session is told at its beginning.
    QStringList beginning;
    QString (*translated)(const QString &statement);
    /// Gives 1 while a transaction is open, whoever began it; asked a second time where the first question may begin one.
    QString askTransaction;
    /// Begin, commit and rollback; the driver's own calls where they are empty.
    QString begin, commit, rollback;
    /// A failed statement may take the whole transaction along, and a definition ends it.
    bool endsTransactions;
    /// The text of a double comes cut, so that it is asked for as a number.
    bool cutsDoubles;
    /// The driver cuts wide texts, so that all texts are asked for as bytes.
    bool textsAreBytes;

    /// The kind that answers there; null for one that nobody has tried.
    static const OdbcServer *behind(const QSqlDatabase &session);
    /// Raises ConnectionLost where this server or this session cannot be worked with.
    void requireFit(const QSqlDatabase &session) const;
};

} // namespace ado
