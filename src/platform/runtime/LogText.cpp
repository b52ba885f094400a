#include "platform/runtime/LogText.h"

#include <QRegularExpression>
#include <QSet>

#include <algorithm>

namespace runtime {

namespace {

const QString Hidden = QStringLiteral("…");

/// Both of words and of numbers, as the servers part them.
const QRegularExpression &word()
{
    static const QRegularExpression expression(QStringLiteral("\\w+"), QRegularExpression::UseUnicodePropertiesOption);
    return expression;
}

/// Each word for which `hides` holds gives way.
template <typename Hides>
QString hidden(const QString &text, Hides hides)
{
    QString shown;
    qsizetype end = 0;
    for (auto words = word().globalMatch(text); words.hasNext();) {
        const QRegularExpressionMatch found = words.next();
        shown += text.sliced(end, found.capturedStart() - end);
        shown += hides(found.captured()) ? Hidden : found.captured();
        end = found.capturedEnd();
    }
    return shown + text.sliced(end);
}

bool isPlain(QChar c)
{
    return c.unicode() < 0x80;
}

} // namespace

QString withoutQuoted(QString message)
{
    // Greedy, and to the end where the last is missing: a value may hold quotes itself.
    static const QRegularExpression quoted(QStringLiteral("[\"'`“‘«「(\\[{].*[\"'`”’»」)\\]}]|[\"'`“‘«「(\\[{].*$"),
                                           QRegularExpression::DotMatchesEverythingOption
                                               | QRegularExpression::UseUnicodePropertiesOption);
    message.replace(quoted, Hidden);
    return hidden(message, [](const QString &found) { return !std::ranges::all_of(found, isPlain); });
}

QString withoutWordsOf(const QString &statement, const QString &message)
{
    QSet<QString> said;
    for (auto words = word().globalMatch(statement); words.hasNext();)
        said.insert(words.next().captured().toCaseFolded());
    return hidden(message, [&](const QString &found) { return said.contains(found.toCaseFolded()); });
}

QByteArray oneLine(QString text)
{
    constexpr qsizetype most = 1'000;
    for (QChar &c : text) {
        if (c.category() <= QChar::Separator_Paragraph && c.category() >= QChar::Separator_Line)
            c = u' ';
        else if (!c.isPrint())
            c = c.isSurrogate() ? c : QChar(u' ');
    }
    return text.left(most).toUtf8();
}

} // namespace runtime
