#pragma once

#include "platform/ado/SelectShape.h"

#include <initializer_list>

namespace ado {

/// Reads a statement into a shape. It knows clauses, not expressions: what it does not understand makes the shape less
/// able, never wrong.
class SelectParser
{
public:
    SelectParser(SelectShape &shape, const QString &statement, Dialect dialect);
    void run();

private:
    using Tokens = std::vector<Token>;
    using Position = std::size_t;

    /// Position of the first of the words outside brackets, or the end.
    Position find(std::initializer_list<QStringView> words, Position from) const;
    bool has(std::initializer_list<QStringView> words) const { return find(words, 0) != tokens_.size(); }
    /// Text from before one token to before another.
    QString between(Position first, Position last) const;
    std::vector<std::pair<Position, Position>> split(Position first, Position last) const;

    void readList(Position first, Position last);
    SelectShape::ListItem listItem(Position first, Position last) const;
    void readSources(Position first, Position last);
    bool readSource(Position &at, Position last);
    void readOrder(Position first, Position last);
    OrderItem orderItem(Position first, Position last) const;
    bool looksAtTheRowAlone(Position filter, Position end) const;

    SelectShape &shape_;
    QString statement_;
    Tokens tokens_;
    bool calls_ = false;
    bool joinedSafely_ = true;
};

} // namespace ado
