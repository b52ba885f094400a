#include "platform/ado/MariaDbText.h"

#include "platform/ado/LikeOperator.h"
#include "platform/ado/SqlText.h"
#include "platform/runtime/RuntimeError.h"

#include <QRegularExpression>

#include <algorithm>

namespace ado {

namespace {

QString valueOf(const Token &literal)
{
    return literal.text.sliced(1, literal.text.size() - 2)
        .toString()
        .replace(QStringLiteral("''"), QStringLiteral("'"));
}

/// Reads on behind a LIKE.
class LikeReader
{
public:
    LikeReader(const std::vector<Token> &tokens, std::size_t at)
        : tokens_(tokens)
        , at_(at)
    {
    }

    QString expression()
    {
        const QString pattern = literal();
        char32_t escape = 0;
        if (at_ < tokens_.size() && tokens_[at_].isWord(u"ESCAPE")) {
            ++at_;
            const QList<uint> sign = literal().toUcs4();
            require(sign.size() == 1);
            escape = sign.front();
        }
        require(endsHere());
        return likeExpression(pattern, escape);
    }

    std::size_t next() const { return at_; }

private:
    static void require(bool understood)
    {
        if (!understood)
            throw runtime::RuntimeError(
                runtime::ErrorNumber::Database,
                QStringLiteral("이 서버에서는 LIKE 뒤에 따옴표로 묶은 글자만 쓸 수 있습니다. 실행하지 않았습니다."));
    }

    QString literal()
    {
        require(at_ < tokens_.size() && tokens_[at_].kind == Token::Kind::Literal);
        return valueOf(tokens_[at_++]);
    }

    /// Whether the pattern is no part of a longer expression.
    bool endsHere() const
    {
        static constexpr QStringView behind[]{u"AND",   u"OR",     u"XOR",   u"THEN", u"ELSE", u"END",
                                              u"WHEN",  u"AS",     u"ASC",   u"DESC", u"FROM", u"GROUP",
                                              u"ORDER", u"HAVING", u"LIMIT", u"FOR",  u"UNION"};
        return at_ == tokens_.size() || tokens_[at_].isSign(u')') || tokens_[at_].isSign(u',')
               || std::ranges::any_of(behind, [&](QStringView word) { return tokens_[at_].isWord(word); });
    }

    const std::vector<Token> &tokens_;
    std::size_t at_;
};

/// The driver (3.1.15) looks for the halves of a pair in the wrong byte of a sign: it takes each of these, as 동, for two
/// signs, so that it reads beyond the statement, and cuts what it gives back as wide text.
bool isMiscounted(QChar sign)
{
    return (sign.unicode() & 0xfc) == 0xd8;
}

/// In ASCII. A literal that the others tell nothing of its collation must bring its own.
QString inHex(const QString &value)
{
    return QStringLiteral("(_utf8mb4 X'%1' COLLATE utf8mb4_nopad_bin)")
        .arg(QLatin1String(value.toUtf8().toHex().toUpper()));
}

} // namespace

QString withLikeAsExpression(const QString &statement)
{
    if (!statement.contains(QLatin1String("LIKE"), Qt::CaseInsensitive))
        return statement;
    const std::vector<Token> tokens = oneStatement(statement, Dialect::MariaDB);
    QString translated;
    qsizetype taken = 0;
    for (std::size_t at = 0; at < tokens.size(); ++at) {
        if (!tokens[at].isWord(u"LIKE"))
            continue;
        LikeReader reader(tokens, at + 1);
        translated += QStringView(statement).sliced(taken, tokens[at].at - taken);
        translated += QStringLiteral("REGEXP '") + reader.expression() + u'\'';
        at = reader.next() - 1;
        taken = tokens[at].end();
    }
    translated += QStringView(statement).sliced(taken);
    return translated;
}

QString withTextsThatArriveWhole(const QString &statement)
{
    if (std::ranges::none_of(statement, isMiscounted))
        return statement;
    QString translated;
    qsizetype taken = 0;
    for (const Token &token : oneStatement(statement, Dialect::MariaDB)) {
        if (std::ranges::none_of(token.text, isMiscounted))
            continue;
        if (token.kind != Token::Kind::Literal)
            throw runtime::RuntimeError(
                runtime::ErrorNumber::Database,
                QStringLiteral("이 서버의 ODBC 드라이버가 전하지 못하는 이름이 있어 실행하지 않았습니다: ")
                    + token.text.toString());
        translated += QStringView(statement).sliced(taken, token.at - taken);
        translated += inHex(valueOf(token));
        taken = token.end();
    }
    translated += QStringView(statement).sliced(taken);
    return translated;
}

QString asMariaDbReads(const QString &statement)
{
    return withTextsThatArriveWhole(withLikeAsExpression(statement));
}

QString withoutHex(QString serverText)
{
    static const QRegularExpression hex(QStringLiteral("X'[0-9A-F]*'?"));
    return serverText.replace(hex, QStringLiteral("''"));
}

} // namespace ado
