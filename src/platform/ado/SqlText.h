#pragma once

#include <QString>
#include <QStringView>

#include <vector>

namespace ado {

/// Whose rules a statement text follows.
enum class Dialect { SQLite, PostgreSQL, MariaDB };

/// One piece of a statement; blanks are left out.
struct Token
{
    enum class Kind { Word, QuotedName, Literal, Number, Sign };

    Kind kind;
    QStringView text; ///< as it stands in the statement, quotes included
    qsizetype at;     ///< offset in the statement
    int depth;        ///< of round brackets; both brackets themselves count as outside

    bool isSign(char16_t sign) const { return kind == Kind::Sign && text == QStringView(&sign, 1); }
    bool isWord(QStringView word) const { return kind == Kind::Word && text.compare(word, Qt::CaseInsensitive) == 0; }
    bool isName() const { return kind == Kind::Word || kind == Kind::QuotedName; }
    qsizetype end() const { return at + text.size(); }
};

/// Cuts the one statement of the text into tokens, read as that server reads it; a closing ';' is left out. Raises
/// Database when there is no statement, a second one, a comment, or a quote or bracket that is never closed: a name that
/// was typed at a desk must not be able to end a statement and begin another. The tokens point into the text.
std::vector<Token> oneStatement(QStringView statement, Dialect dialect);

/// The name without its quotes.
QString bareName(const Token &token);

} // namespace ado
