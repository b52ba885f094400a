#include "fuzz/Fuzz.h"
#include "platform/ado/LikeOperator.h"

#include <QChar>
#include <QList>

#include <vector>

namespace {

char32_t folded(char32_t sign)
{
    return QChar::toCaseFolded(sign);
}

/// One sign against the members between the brackets.
bool inClass(const QList<uint> &members, char32_t sign)
{
    const bool negated = !members.isEmpty() && members[0] == U'^';
    bool inside = false;
    for (const char32_t form : {sign, char32_t(QChar::toLower(sign)), char32_t(QChar::toUpper(sign))}) {
        for (qsizetype at = negated ? 1 : 0; at < members.size(); ++at) {
            const char32_t first = members[at];
            char32_t last = first;
            if (at + 2 < members.size() && members[at + 1] == U'-')
                last = members[at += 2];
            inside = inside || (form >= first && form <= last);
        }
    }
    return inside != negated;
}

/// The rules read slowly and plainly: which places of the pattern can be reached after each sign of the text.
bool plainly(const QList<uint> &text, const QList<uint> &pattern)
{
    std::vector<bool> reached(std::size_t(pattern.size()) + 1);
    reached[0] = true;
    const auto spread = [&] {
        for (std::size_t at = 0; at < std::size_t(pattern.size()); ++at) {
            if (reached[at] && pattern[qsizetype(at)] == U'%')
                reached[at + 1] = true;
        }
    };
    spread();
    for (const char32_t sign : text) {
        std::vector<bool> next(reached.size());
        for (std::size_t at = 0; at < std::size_t(pattern.size()); ++at) {
            if (!reached[at])
                continue;
            const char32_t place = pattern[qsizetype(at)];
            if (place == U'%') {
                next[at] = true;
            } else if (place == U'[') {
                const qsizetype closing = pattern.indexOf(U']', qsizetype(at) + 1);
                const QList<uint> members =
                    closing < 0 ? QList<uint>() : pattern.mid(qsizetype(at) + 1, closing - qsizetype(at) - 1);
                if (!members.isEmpty() && inClass(members, sign))
                    next[std::size_t(closing) + 1] = true;
            } else if (place == U'_' || folded(place) == folded(sign)) {
                next[at + 1] = true;
            }
        }
        reached = next;
        spread();
    }
    return reached[std::size_t(pattern.size())];
}

} // namespace

/// A pattern and a text.
void fuzz(const QByteArray &given)
{
    if (given.size() > 400)
        return;
    QByteArray bytes = given;
    const QString pattern = takeText(bytes);
    const QString text = QString::fromUtf8(bytes);
    demand(ado::like(text, pattern) == plainly(text.toUcs4(), pattern.toUcs4()), "LIKE means what it means");
    ado::like(text, pattern, U'\\');
}
