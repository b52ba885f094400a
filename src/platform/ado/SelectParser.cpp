#include "platform/ado/SelectParser.h"

#include "platform/runtime/RuntimeError.h"

#include <algorithm>

namespace ado {

namespace {

bool isAny(const Token &token, std::initializer_list<QStringView> words)
{
    return std::ranges::any_of(words, [&](QStringView word) { return token.isWord(word); });
}

bool isJoinWord(const Token &token)
{
    return isAny(token,
                 {u"INNER", u"LEFT", u"RIGHT", u"FULL", u"CROSS", u"OUTER", u"NATURAL", u"JOIN", u"ON", u"USING"});
}

} // namespace

SelectParser::SelectParser(SelectShape &shape, const QString &statement, Dialect dialect)
    : shape_(shape)
    , statement_(statement)
    , tokens_(oneStatement(statement_, dialect))
{
}

SelectParser::Position SelectParser::find(std::initializer_list<QStringView> words, Position from) const
{
    while (from < tokens_.size() && (tokens_[from].depth != 0 || !isAny(tokens_[from], words)))
        ++from;
    return from;
}

QString SelectParser::between(Position first, Position last) const
{
    if (first >= last)
        return {};
    const qsizetype start = tokens_[first].at;
    return statement_.sliced(start, tokens_[last - 1].end() - start);
}

std::vector<std::pair<SelectParser::Position, SelectParser::Position>> SelectParser::split(Position first,
                                                                                           Position last) const
{
    std::vector<std::pair<Position, Position>> parts;
    Position start = first;
    for (Position at = first; at <= last; ++at) {
        if (at == last || (tokens_[at].depth == 0 && tokens_[at].isSign(u','))) {
            parts.emplace_back(start, at);
            start = at + 1;
        }
    }
    return parts;
}

void SelectParser::run()
{
    if (!isAny(tokens_.front(), {u"SELECT", u"WITH"}))
        throw runtime::RuntimeError(runtime::ErrorNumber::Database,
                                    QStringLiteral("조회 문장이 아니어서 목록을 열 수 없습니다."));
    const Position end = tokens_.size();
    const bool combined = tokens_.front().isWord(u"WITH") || has({u"UNION", u"INTERSECT", u"EXCEPT"});
    const Position limit = find({u"LIMIT", u"OFFSET", u"FETCH", u"FOR"}, 0);
    const Position order = std::min(find({u"ORDER"}, 0), limit);
    const Position filter = std::min(find({u"WHERE", u"GROUP", u"HAVING", u"WINDOW"}, 0), order);
    const Position from = std::min(find({u"FROM"}, 0), filter);
    const bool distinct = has({u"DISTINCT", u"TOP", u"INTO"});
    const bool grouped = has({u"GROUP", u"HAVING"});

    const auto clause = [&](Position first, Position last) {
        return first < last ? u' ' + between(first, last) : QString();
    };
    shape_.list_ = between(0, from);
    shape_.from_ = clause(from, filter);
    shape_.filter_ = clause(filter, order);
    shape_.orderText_ = clause(order, limit);
    shape_.limit_ = clause(limit, end);
    if (order < limit)
        readOrder(order, limit);
    if (combined)
        return;
    readList(tokens_.size() > 1 && isAny(tokens_[1], {u"ALL", u"DISTINCT"}) ? 2 : 1, from);
    if (from < filter)
        readSources(from + 1, filter);

    shape_.extensible_ =
        !distinct && limit == end && (grouped || !calls_)
        && std::ranges::none_of(shape_.order_, [](const OrderItem &item) { return item.expression.isEmpty(); });
    const bool keyed = shape_.extensible_ && !grouped && !calls_ && joinedSafely_ && !shape_.sources_.empty();
    shape_.base_ = keyed ? shape_.sources_.front().table : nullptr;
    shape_.plainFrom_ = from + 2 == filter;
    if (looksAtTheRowAlone(filter, order))
        shape_.condition_ = between(filter + 1, order);
}

/// By comparing columns with what the statement says: no function, no other table, no clock.
bool SelectParser::looksAtTheRowAlone(Position filter, Position end) const
{
    const auto harmless = [this](const Token &token) {
        switch (token.kind) {
        case Token::Kind::Literal:
        case Token::Kind::Number:
            return true;
        case Token::Kind::Sign:
            return QStringView(u"=<>!(),").contains(token.text);
        case Token::Kind::Word:
            return isAny(token, {u"AND", u"OR", u"NOT", u"IS", u"NULL", u"IN"})
                   || shape_.baseColumn(token.text.toString());
        case Token::Kind::QuotedName:
            return false;
        }
        return false;
    };
    return filter < end && tokens_[filter].isWord(u"WHERE")
           && std::all_of(tokens_.begin() + static_cast<std::ptrdiff_t>(filter) + 1,
                          tokens_.begin() + static_cast<std::ptrdiff_t>(end), harmless);
}

void SelectParser::readList(Position first, Position last)
{
    for (const auto &[from, to] : split(first, last))
        shape_.items_.push_back(listItem(from, to));
    for (Position at = first; at < last; ++at)
        calls_ = calls_ || tokens_[at].isSign(u'(');
}

SelectShape::ListItem SelectParser::listItem(Position first, Position last) const
{
    SelectShape::ListItem item;
    const Position count = last - first;
    item.expression = between(first, last);
    if (count == 0)
        return item;
    const Token &end = tokens_[last - 1];
    const bool qualified = count == 3 && tokens_[first].isName() && tokens_[first + 1].isSign(u'.');
    if ((count == 1 || qualified) && (end.isName() || end.isSign(u'*'))) {
        item.name = end.isName() ? bareName(end) : end.text.toString();
        item.qualifier = qualified ? tokens_[first].text.toString() : QString();
        item.plain = true;
        return item;
    }
    const bool named = count >= 2 && end.isName() && !end.isWord(u"END")
                       && (tokens_[last - 2].kind != Token::Kind::Sign || tokens_[last - 2].isSign(u')'));
    if (named) {
        const Position alias = tokens_[last - 2].isWord(u"AS") ? last - 2 : last - 1;
        item.name = bareName(end);
        item.expression = between(first, alias);
    }
    return item;
}

void SelectParser::readSources(Position first, Position last)
{
    Position at = first;
    joinedSafely_ = readSource(at, last);
    for (; at < last; ++at) {
        const Token &token = tokens_[at];
        if (token.depth != 0)
            continue;
        // Rows of which the first table may have no part, and joins whose condition stands in the filter, cannot be read
        // again by the first table's key alone.
        if (token.isSign(u',') || isAny(token, {u"RIGHT", u"FULL", u"NATURAL"}))
            joinedSafely_ = false;
        if (token.isWord(u"JOIN")) {
            ++at;
            joinedSafely_ = readSource(at, last) && joinedSafely_;
            --at;
        }
    }
}

bool SelectParser::readSource(Position &at, Position last)
{
    if (at >= last || !tokens_[at].isName())
        return false;
    Position name = at;
    while (name + 2 < last && tokens_[name + 1].isSign(u'.') && tokens_[name + 2].isName())
        name += 2;
    SelectShape::Source source{findTable(bareName(tokens_[name])), between(at, name + 1)};
    at = name + 1;
    if (at < last && tokens_[at].isWord(u"AS"))
        ++at;
    if (at < last && tokens_[at].isName() && !isJoinWord(tokens_[at]))
        source.name = tokens_[at++].text.toString();
    shape_.sources_.push_back(std::move(source));
    return true;
}

void SelectParser::readOrder(Position first, Position last)
{
    if (first + 1 >= last || !tokens_[first + 1].isWord(u"BY"))
        return;
    for (const auto &[from, to] : split(first + 2, last))
        shape_.order_.push_back(orderItem(from, to));
}

OrderItem SelectParser::orderItem(Position first, Position last) const
{
    OrderItem item;
    if (first < last && isAny(tokens_[last - 1], {u"ASC", u"DESC"}))
        item.descending = tokens_[--last].isWord(u"DESC");
    const Position count = last - first;
    const bool understood =
        count > 0 && tokens_[first].kind != Token::Kind::Number && find({u"NULLS", u"COLLATE"}, first) >= last;
    if (!understood)
        return item;
    item.expression = between(first, last);
    if (tokens_[last - 1].isName() && (count == 1 || tokens_[last - 2].isSign(u'.')))
        item.field = bareName(tokens_[last - 1]);
    return item;
}

} // namespace ado
