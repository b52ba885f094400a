#pragma once

#include <QString>
#include <QStringList>

namespace ado {

/// What a session with MariaDB is told and asked.
namespace mariaDbSession {

QString completed(const QString &connectionString);
bool isNewEnough(const QString &version);

/// By these a literal ends at its quote alone, "..." is a name, || puts texts together, what does not fit is refused, and
/// texts are equal when all their signs are.
inline const QStringList readAsTheLayer{
    QStringLiteral("SET SESSION sql_mode = 'ANSI_QUOTES,PIPES_AS_CONCAT,NO_BACKSLASH_ESCAPES,IGNORE_SPACE,"
                   "ONLY_FULL_GROUP_BY,STRICT_ALL_TABLES,NO_ZERO_IN_DATE,NO_ZERO_DATE,ERROR_FOR_DIVISION_BY_ZERO,"
                   "NO_ENGINE_SUBSTITUTION,NO_AUTO_VALUE_ON_ZERO,SIMULTANEOUS_ASSIGNMENT,NO_UNSIGNED_SUBTRACTION'"),
    // Texts come as bytes then, which are UTF-8 all the same.
    QStringLiteral("SET SESSION character_set_client = utf8mb4, SESSION character_set_results = binary, SESSION "
                   "collation_connection = utf8mb4_nopad_bin")};
inline const QString askReading = QStringLiteral(
    "SELECT FIND_IN_SET('ANSI_QUOTES', @@sql_mode) > 0 AND FIND_IN_SET('PIPES_AS_CONCAT', @@sql_mode) > 0 AND "
    "FIND_IN_SET('NO_BACKSLASH_ESCAPES', @@sql_mode) > 0 AND @@character_set_client = 'utf8mb4'");

inline const QStringList beginning{
    // A statement in a transaction sees what others have saved by then, as elsewhere.
    QStringLiteral("SET SESSION TRANSACTION ISOLATION LEVEL READ COMMITTED"),
    // Of these a server may have been given values by which rows are left out or a commit begins anew.
    QStringLiteral("SET SESSION autocommit = 1, SESSION completion_type = 0, SESSION sql_select_limit = "
                   "18446744073709551615, SESSION sql_auto_is_null = 0, SESSION default_regex_flags = ''"),
    // As with PostgreSQL: eight seconds for a lock, thirty for one who stands still; a server's own times stay.
    QStringLiteral("SET SESSION innodb_lock_wait_timeout = IF(@@global.innodb_lock_wait_timeout = 50, 8, "
                   "@@global.innodb_lock_wait_timeout), SESSION lock_wait_timeout = IF(@@global.lock_wait_timeout = "
                   "86400, 8, @@global.lock_wait_timeout), SESSION idle_transaction_timeout = "
                   "IF(@@global.idle_transaction_timeout = 0, 30, @@global.idle_transaction_timeout)")};

inline const QString askTransaction = QStringLiteral("SELECT @@in_transaction = 1 OR @@autocommit = 0");
inline const QString askVersion = QStringLiteral("SELECT VERSION()");
/// The statements of the system write one table's name in several ways.
inline const QString askNames = QStringLiteral("SELECT @@lower_case_table_names <> 0");
inline const QString twoStatements = QStringLiteral("DO 0; DO 0");

} // namespace mariaDbSession

} // namespace ado
