#include "platform/ado/LikeOperator.h"

#include "platform/runtime/RuntimeError.h"

#include <QChar>
#include <QList>

#include <sqlite3.h>

#include <algorithm>
#include <iterator>
#include <optional>
#include <vector>

namespace ado {

namespace {

struct Range
{
    char32_t first;
    char32_t last;
};

/// One place of a pattern.
struct Place
{
    enum class Kind { AnyText, AnySign, Sign, Class, Never };
    Kind kind;
    char32_t sign = 0;
    bool negated = false;
    std::vector<Range> ranges = {};
};

bool inRanges(const std::vector<Range> &ranges, char32_t sign)
{
    return std::ranges::any_of(ranges, [=](Range range) { return sign >= range.first && sign <= range.last; });
}

bool fits(const Place &place, char32_t sign)
{
    switch (place.kind) {
    case Place::Kind::AnySign:
        return true;
    case Place::Kind::Sign:
        return QChar::toCaseFolded(place.sign) == QChar::toCaseFolded(sign);
    case Place::Kind::Class: {
        const bool inside = inRanges(place.ranges, sign) || inRanges(place.ranges, QChar::toLower(sign))
                            || inRanges(place.ranges, QChar::toUpper(sign));
        return inside != place.negated;
    }
    default:
        return false;
    }
}

std::vector<Range> rangesOf(const char32_t *at, const char32_t *end)
{
    std::vector<Range> ranges;
    while (at != end) {
        const bool spans = end - at >= 3 && at[1] == U'-';
        ranges.push_back({at[0], at[spans ? 2 : 0]});
        at += spans ? 3 : 1;
    }
    return ranges;
}

/// Reads the class whose '[' stands at `at` and leaves `at` on its ']'.
Place classAt(const char32_t *&at, const char32_t *end)
{
    const char32_t *const closing = std::find(at + 1, end, U']');
    const char32_t *members = at + 1;
    at = closing;
    if (closing == end || members == closing)
        return {Place::Kind::Never};
    const bool negated = *members == U'^';
    return {Place::Kind::Class, 0, negated, rangesOf(members + (negated ? 1 : 0), closing)};
}

std::vector<Place> placesOf(QStringView pattern, char32_t escape)
{
    const QList<uint> signs = pattern.toUcs4();
    const std::vector<char32_t> text(signs.begin(), signs.end());
    std::vector<Place> places;
    const char32_t *const end = text.data() + text.size();
    for (const char32_t *at = text.data(); at != end; ++at) {
        if (escape != 0 && *at == escape && at + 1 != end)
            places.push_back({Place::Kind::Sign, *++at});
        else if (*at == U'%')
            places.push_back({Place::Kind::AnyText});
        else if (*at == U'_')
            places.push_back({Place::Kind::AnySign});
        else if (*at != U'[')
            places.push_back({Place::Kind::Sign, *at});
        else if (places.push_back(classAt(at, end)); at == end)
            break;
    }
    return places;
}

/// Goes back only to the last '%': what stood before it has been matched as early as it can be.
bool matches(const QList<uint> &text, const std::vector<Place> &places)
{
    std::size_t place = 0;
    qsizetype at = 0;
    std::optional<std::size_t> afterAny;
    qsizetype retryAt = 0;
    while (at < text.size()) {
        if (place < places.size() && places[place].kind == Place::Kind::AnyText) {
            afterAny = ++place;
            retryAt = at;
        } else if (place < places.size() && fits(places[place], text[at])) {
            ++place;
            ++at;
        } else if (afterAny) {
            place = *afterAny;
            at = ++retryAt;
        } else {
            return false;
        }
    }
    return std::all_of(places.begin() + static_cast<std::ptrdiff_t>(place), places.end(),
                       [](const Place &rest) { return rest.kind == Place::Kind::AnyText; });
}

/// A sign of ASCII by its number, so that it means nothing else wherever it stands.
QString expressionOf(char32_t sign)
{
    constexpr char32_t beyondAscii = 0x80;
    const bool plain = sign >= beyondAscii || QChar::isLetterOrNumber(sign);
    return plain ? QString::fromUcs4(&sign, 1) : QStringLiteral("\\x%1").arg(uint(sign), 2, 16, QLatin1Char('0'));
}

QString expressionOf(const Place &place)
{
    switch (place.kind) {
    case Place::Kind::AnyText:
        return QStringLiteral(".*");
    case Place::Kind::AnySign:
        return QStringLiteral(".");
    case Place::Kind::Sign:
        return expressionOf(place.sign);
    case Place::Kind::Never:
        return QStringLiteral("(?!)");
    case Place::Kind::Class:
        break;
    }
    QString members;
    for (const Range &range : place.ranges) {
        if (range.first <= range.last) // the other way round it holds nothing
            members += expressionOf(range.first) + u'-' + expressionOf(range.last);
    }
    if (members.isEmpty())
        return place.negated ? QStringLiteral(".") : QStringLiteral("(?!)");
    return (place.negated ? QStringLiteral("[^") : QStringLiteral("[")) + members + u']';
}

QString argument(sqlite3_value *value)
{
    return QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_value_text(value)), sqlite3_value_bytes(value));
}

/// The pattern is the first argument, the text the second.
void likeFunction(sqlite3_context *context, int count, sqlite3_value **arguments)
{
    for (int at = 0; at < count; ++at) {
        if (sqlite3_value_type(arguments[at]) == SQLITE_NULL)
            return sqlite3_result_null(context);
    }
    // One statement asks with one pattern for every row; the engine keeps what was made of it.
    auto *places = static_cast<std::vector<Place> *>(sqlite3_get_auxdata(context, 0));
    std::optional<std::vector<Place>> fresh;
    if (!places) {
        const QList<uint> escape = count == 3 ? argument(arguments[2]).toUcs4() : QList<uint>();
        fresh = placesOf(argument(arguments[0]), escape.isEmpty() ? 0 : escape.first());
        places = &*fresh;
    }
    sqlite3_result_int(context, matches(argument(arguments[1]).toUcs4(), *places));
    if (fresh && count == 2) {
        sqlite3_set_auxdata(context, 0, new std::vector<Place>(std::move(*fresh)),
                            [](void *kept) { delete static_cast<std::vector<Place> *>(kept); });
    }
}

} // namespace

bool like(QStringView text, QStringView pattern, char32_t escape)
{
    return matches(text.toUcs4(), placesOf(pattern, escape));
}

QString likeExpression(QStringView pattern, char32_t escape)
{
    // What stands between two '%' is taken as early as it comes and never given back, so that no text takes long.
    QString expression = QStringLiteral("(?is)\\A"), part;
    bool behindAny = false;
    for (const Place &place : placesOf(pattern, escape)) {
        if (place.kind != Place::Kind::AnyText) {
            part += expressionOf(place);
            continue;
        }
        if (!part.isEmpty())
            expression += behindAny ? QStringLiteral("(?>.*?%1)").arg(part) : part;
        part.clear();
        behindAny = true;
    }
    if (behindAny && part.isEmpty())
        return expression;
    return expression + (behindAny ? QStringLiteral(".*") : QString()) + part + QStringLiteral("\\z");
}

void installLikeOperator(sqlite3 *handle, const std::shared_ptr<bool> &closed)
{
    using Held = std::shared_ptr<bool>;
    const auto tell = [](void *held) {
        const std::unique_ptr<Held> last(static_cast<Held *>(held));
        **last = true;
    };
    for (int arguments : {2, 3}) {
        if (sqlite3_create_function_v2(handle, "like", arguments, SQLITE_UTF8 | SQLITE_DETERMINISTIC, new Held(closed),
                                       likeFunction, nullptr, nullptr, tell)
            != SQLITE_OK)
            throw runtime::RuntimeError(runtime::ErrorNumber::Database, QString::fromUtf8(sqlite3_errmsg(handle)));
    }
}

} // namespace ado
