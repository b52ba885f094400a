#include "platform/ado/PostgresStatement.h"

#include "platform/ado/SqlText.h"

#include <QStringList>

#include <algorithm>
#include <initializer_list>

namespace ado {

namespace {

bool startsWithOneOf(const QString &statement, std::initializer_list<QStringView> words)
{
    const QStringView text = QStringView(statement).trimmed();
    return std::ranges::any_of(words, [&](QStringView word) { return text.startsWith(word, Qt::CaseInsensitive); });
}

/// A statement that calls nothing but these changes no setting of the session's.
bool callsAnything(const Command &statement)
{
    static const QStringList harmless =
        QStringLiteral(
            "in from where and or not exists case when then else select values sum max count coalesce nullif "
            "cast varchar lower format_type current_setting to_regclass has_table_privilege "
            "has_schema_privilege has_function_privilege has_sequence_privilege pg_get_serial_sequence "
            "pg_relation_is_updatable pg_table_is_visible "
            "pg_is_in_recovery")
            .split(u' ');
    const std::vector<Token> tokens = oneStatement(statement.text(), Dialect::PostgreSQL);
    for (std::size_t at = 1; at < tokens.size(); ++at) {
        const Token &name = tokens[at - 1];
        // Behind these words stands a table, or an alias, with its columns.
        const bool isList = at > 1 && (tokens[at - 2].isWord(u"INTO") || tokens[at - 2].isWord(u"AS"));
        if (tokens[at].isSign(u'(') && name.isName() && !isList && !harmless.contains(name.text, Qt::CaseInsensitive))
            return true;
    }
    return false;
}

} // namespace

bool postgresStatement::isSame(const Command &one, const Command &other)
{
    return one.text() == other.text() && one.values() == other.values();
}

bool postgresStatement::holdsLiteral(const Command &statement)
{
    return statement.text().contains(u'\'');
}

bool postgresStatement::keepsTransaction(const QString &statement)
{
    return startsWithOneOf(statement, {u"SELECT ", u"INSERT ", u"UPDATE ", u"DELETE ", u"SHOW "});
}

bool postgresStatement::isReading(const Command &statement)
{
    return startsWithOneOf(statement.text(), {u"SELECT ", u"SHOW ", u"BEGIN", u"SAVEPOINT ", u"RELEASE "});
}

bool postgresStatement::keepsSettings(const Command &statement)
{
    return keepsTransaction(statement.text())
               ? !callsAnything(statement)
               : startsWithOneOf(statement.text(), {u"BEGIN", u"SAVEPOINT ", u"RELEASE ", u"ROLLBACK TO "});
}

std::vector<Command> postgresStatement::sendable(std::vector<Command> statements, bool settled)
{
    const auto last = std::ranges::find_if_not(statements, [&](const Command &next) {
        const bool harmless = keepsTransaction(next.text()) && (settled || !holdsLiteral(next));
        settled = settled && keepsSettings(next);
        return harmless;
    });
    statements.erase(last, statements.end());
    return statements;
}

} // namespace ado
