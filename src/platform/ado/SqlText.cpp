#include "platform/ado/SqlText.h"

#include "platform/runtime/RuntimeError.h"

namespace ado {

namespace {

[[noreturn]] void refuse(const QString &why)
{
    throw runtime::RuntimeError(runtime::ErrorNumber::Database, why);
}

// Only what every server takes for a blank: a wider one would hide where its words begin.
bool isBlank(QChar c)
{
    return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r' || c == u'\f';
}

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

class Lexer
{
public:
    Lexer(QStringView text, Dialect dialect)
        : text_(text)
        , dialect_(dialect)
    {
    }

    std::vector<Token> run()
    {
        // What cannot be sent as it stands would be another text to the server.
        if (text_.contains(QChar(u'\0')) || !text_.isValidUtf16())
            refuse(QStringLiteral("문장에 사용할 수 없는 문자가 있습니다."));
        tokens_.reserve(16);
        for (skipBlanks(); at_ < text_.size(); skipBlanks()) {
            if (ended_)
                refuse(QStringLiteral("한 번에 한 문장만 실행할 수 있습니다."));
            next();
        }
        if (tokens_.empty())
            refuse(QStringLiteral("실행할 문장이 비어 있습니다."));
        if (depth_ != 0)
            refuse(QStringLiteral("문장의 괄호가 맞지 않습니다."));
        return std::move(tokens_);
    }

private:
    bool startsWord(QChar c) const
    {
        return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || c == u'_' || c.unicode() > 0x7f;
    }

    bool continuesWord(QChar c) const { return startsWord(c) || isDigit(c) || c == u'$'; }

    QChar peek(qsizetype ahead = 0) const { return at_ + ahead < text_.size() ? text_[at_ + ahead] : QChar(); }

    void skipBlanks()
    {
        while (at_ < text_.size() && isBlank(text_[at_]))
            ++at_;
    }

    void next()
    {
        const QChar c = peek();
        if (c == u'{' || c == u'}') // a driver in between would put something else in their place
            refuse(QStringLiteral("문장에 사용할 수 없는 문자가 있습니다."));
        if ((c == u'-' && peek(1) == u'-') || (c == u'/' && peek(1) == u'*'))
            refuse(QStringLiteral("문장에 주석을 사용할 수 없습니다."));
        if (dialect_ == Dialect::MariaDB)
            refuseOfMariaDb(c);
        if (c == u'\'')
            take(Token::Kind::Literal, endOfQuoted(at_, u'\''));
        else if (c == u'"')
            take(Token::Kind::QuotedName, endOfQuoted(at_, u'"'));
        else if (c == u'`' && dialect_ != Dialect::PostgreSQL)
            take(Token::Kind::QuotedName, endOfQuoted(at_, u'`'));
        else if (c == u'[' && dialect_ == Dialect::SQLite)
            take(Token::Kind::QuotedName, endOfBracketed());
        else if (c == u'$' && dialect_ == Dialect::PostgreSQL && dollarTagLength() > 0)
            take(Token::Kind::Literal, endOfDollarQuoted());
        else if (startsWord(c))
            word();
        else if (isDigit(c))
            number();
        else
            sign(c);
    }

    /// A comment of its own; a value that was never given, to the driver; a sign that some settings take for an escape.
    static void refuseOfMariaDb(QChar c)
    {
        if (c == u'#')
            refuse(QStringLiteral("문장에 주석을 사용할 수 없습니다."));
        if (c == u'?' || c == u'\\')
            refuse(QStringLiteral("문장에 사용할 수 없는 문자가 있습니다."));
    }

    void word()
    {
        if ((peek() == u'E' || peek() == u'e') && peek(1) == u'\'' && dialect_ == Dialect::PostgreSQL) {
            take(Token::Kind::Literal, endOfEscaped());
            return;
        }
        qsizetype end = at_;
        while (end < text_.size() && continuesWord(text_[end]))
            ++end;
        take(Token::Kind::Word, end);
    }

    void number()
    {
        qsizetype end = at_;
        while (end < text_.size() && (isDigit(text_[end]) || text_[end] == u'.'))
            ++end;
        take(Token::Kind::Number, end);
    }

    void sign(QChar c)
    {
        if (c == u';') {
            ended_ = true;
            ++at_;
            return;
        }
        if (c == u')' && --depth_ < 0)
            refuse(QStringLiteral("문장의 괄호가 맞지 않습니다."));
        take(Token::Kind::Sign, at_ + 1);
        if (c == u'(')
            ++depth_;
    }

    void take(Token::Kind kind, qsizetype end)
    {
        tokens_.push_back({kind, text_.sliced(at_, end - at_), at_, depth_});
        at_ = end;
    }

    /// A doubled quote stands for itself.
    qsizetype endOfQuoted(qsizetype from, QChar quote) const
    {
        for (qsizetype end = from + 1; end < text_.size(); ++end) {
            if (text_[end] != quote)
                continue;
            if (end + 1 >= text_.size() || text_[end + 1] != quote)
                return end + 1;
            ++end;
        }
        refuse(QStringLiteral("문장의 따옴표가 닫히지 않았습니다."));
    }

    qsizetype endOfBracketed() const
    {
        const qsizetype closing = text_.indexOf(u']', at_ + 1);
        if (closing < 0)
            refuse(QStringLiteral("문장의 대괄호가 닫히지 않았습니다."));
        return closing + 1;
    }

    /// E'...': a backslash takes the next sign with it, also in a part that follows on a new line.
    qsizetype endOfEscaped() const
    {
        qsizetype end = at_ + 2;
        while (end < text_.size()) {
            if (text_[end] == u'\\') {
                end += 2;
            } else if (text_[end] != u'\'') {
                ++end;
            } else if (end + 1 < text_.size() && text_[end + 1] == u'\'') {
                end += 2;
            } else if (const qsizetype next = continuationAfter(end + 1); next > 0) {
                end = next;
            } else {
                return end + 1;
            }
        }
        refuse(QStringLiteral("문장의 따옴표가 닫히지 않았습니다."));
    }

    /// Offset behind the opening quote of a continued literal; 0 when the literal ends here.
    qsizetype continuationAfter(qsizetype from) const
    {
        bool newLine = false;
        for (; from < text_.size() && isBlank(text_[from]); ++from)
            newLine |= text_[from] == u'\n' || text_[from] == u'\r';
        return newLine && from < text_.size() && text_[from] == u'\'' ? from + 1 : 0;
    }

    /// Length of "$tag$" here; 0 when it is none.
    qsizetype dollarTagLength() const
    {
        qsizetype end = at_ + 1;
        if (end < text_.size() && isDigit(text_[end]))
            return 0;
        while (end < text_.size() && text_[end] != u'$' && continuesWord(text_[end]))
            ++end;
        return end < text_.size() && text_[end] == u'$' ? end + 1 - at_ : 0;
    }

    qsizetype endOfDollarQuoted() const
    {
        const QStringView tag = text_.sliced(at_, dollarTagLength());
        const qsizetype closing = text_.indexOf(tag, at_ + tag.size());
        if (closing < 0)
            refuse(QStringLiteral("문장의 따옴표가 닫히지 않았습니다."));
        return closing + tag.size();
    }

    QStringView text_;
    Dialect dialect_;
    qsizetype at_ = 0;
    int depth_ = 0;
    bool ended_ = false;
    std::vector<Token> tokens_;
};

} // namespace

std::vector<Token> oneStatement(QStringView statement, Dialect dialect)
{
    return Lexer(statement, dialect).run();
}

QString bareName(const Token &token)
{
    if (token.kind != Token::Kind::QuotedName)
        return token.text.toString();
    QString name = token.text.sliced(1, token.text.size() - 2).toString();
    const QChar quote = token.text.front();
    if (quote != u'[')
        name.replace(QString(2, quote), QString(quote));
    return name;
}

} // namespace ado
