#include "platform/ado/LiftNumbers.h"

#include "platform/ado/SqlText.h"

#include <algorithm>
#include <optional>

namespace ado {

namespace {

std::optional<qlonglong> wholeNumber(const Token &token)
{
    if (token.kind != Token::Kind::Number)
        return std::nullopt;
    bool whole = false;
    const qlonglong number = token.text.toLongLong(&whole);
    return whole ? std::optional(number) : std::nullopt;
}

/// Whether the sign behind the number ends it: "1e5" is read as a number and a word.
bool endsNumber(QStringView text, qsizetype end)
{
    return end == text.size() || QStringView(u" ,)").contains(text[end]);
}

} // namespace

Command liftNumbers(const Command &statement)
{
    const QStringView text = statement.text();
    if (!statement.values().isEmpty())
        return statement;
    const std::vector<Token> tokens = oneStatement(text, Dialect::SQLite);
    // Before its filter a query names its columns.
    bool within = tokens.front().isWord(u"UPDATE") || tokens.front().isWord(u"DELETE");
    const bool query = tokens.front().isWord(u"SELECT");
    const bool marked = std::ranges::any_of(tokens, [](const Token &token) { return token.isSign(u'?'); });
    if ((!within && !query) || marked)
        return statement;

    Command lifted(Command::Values::Marked);
    qsizetype taken = 0;
    for (std::size_t at = 1; at < tokens.size(); ++at) {
        const Token &token = tokens[at];
        within = within || token.isWord(u"WHERE");
        if (!within || !tokens[at - 1].isSign(u'='))
            continue;
        if (const std::optional<qlonglong> number = wholeNumber(token); number && endsNumber(text, token.end())) {
            lifted << text.sliced(taken, token.at - taken);
            lifted.value(*number);
            taken = token.end();
        }
    }
    return lifted << text.sliced(taken);
}

} // namespace ado
