#include "platform/ado/SelectShape.h"

#include "platform/ado/SelectParser.h"

#include <algorithm>

namespace ado {

namespace {

bool sameName(QStringView a, QStringView b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

QString withAdded(const QString &list, const QStringList &added)
{
    return added.isEmpty() ? list : list + QStringLiteral(", ") + added.join(QStringLiteral(", "));
}

} // namespace

SelectShape::SelectShape(const QString &statement, Dialect dialect)
{
    SelectParser(*this, statement, dialect).run();
    if (base_ && base_->keyIsTold)
        key_ = {base_->key, base_->key};
}

const Column *SelectShape::baseColumn(const QString &field) const
{
    const Column *column = base_ ? base_->column(field) : nullptr;
    const bool elsewhere = std::ranges::any_of(sources_, [&](const Source &source) {
        return source.table != base_ && (!source.table || source.table->column(field));
    });
    const bool renamed =
        std::ranges::any_of(items_, [&](const ListItem &item) { return !item.plain && sameName(item.name, field); });
    return elsewhere || renamed ? nullptr : column;
}

bool SelectShape::listHolds(const QString &field) const
{
    return std::ranges::any_of(items_, [&](const ListItem &item) {
        if (item.name != u"*")
            return sameName(item.name, field);
        return std::ranges::any_of(sources_, [&](const Source &source) {
            return source.table && source.table->column(field)
                   && (item.qualifier.isEmpty() || sameName(item.qualifier, source.name));
        });
    });
}

QString SelectShape::keyName() const
{
    return sources_.front().name + u'.' + key_.text;
}

bool SelectShape::keyIsAdded() const
{
    // In a join a column of that name may be another table's.
    return base_ && !key_.name.isEmpty() && (joined() || !baseColumn(key_.name) || !listHolds(key_.name));
}

bool SelectShape::isWholeTable() const
{
    return base_ && !joined() && filter_.isEmpty()
           && std::ranges::all_of(order_, [this](const OrderItem &item) { return baseColumn(item.field); });
}

bool SelectShape::tellsRowsByThemselves() const
{
    const auto isOwn = [this](const ListItem &item) { return item.name == u"*" || baseColumn(item.name); };
    return base_ && plainFrom_ && std::ranges::all_of(items_, isOwn) && filter_.isEmpty() == condition_.isEmpty()
           && std::ranges::all_of(order_, [this](const OrderItem &item) { return baseColumn(item.field); });
}

bool SelectShape::showsRows() const
{
    return base_ && !joined()
           && std::ranges::all_of(items_, [](const ListItem &item) { return item.plain && item.qualifier.isEmpty(); });
}

QString SelectShape::returned() const
{
    QStringList items;
    for (const ListItem &item : items_)
        items << item.expression;
    return QStringLiteral(" RETURNING ") + items.join(QStringLiteral(", "));
}

QStringList SelectShape::added() const
{
    QStringList expressions;
    if (keyIsAdded())
        expressions << keyName();
    for (const OrderItem &item : order_) {
        if (extensible_ && !item.expression.isEmpty() && (item.field.isEmpty() || !listHolds(item.field)))
            expressions << item.expression;
    }
    return expressions;
}

QString SelectShape::all() const
{
    if (!extensible_)
        return whole();
    return withAdded(list_, added()) + from_ + filter_;
}

QString SelectShape::allAmong() const
{
    return allOfKeys() + QStringLiteral(" WHERE ")
           + (condition_.isEmpty() ? QString() : u'(' + condition_ + QStringLiteral(") AND ")) + keyName();
}

QString SelectShape::allOfKeys() const
{
    return withAdded(list_, added()) + from_;
}

/// One for each order item.
QStringList SelectShape::orderExpressions() const
{
    QStringList expressions;
    for (const OrderItem &item : order_) {
        const auto alias = std::ranges::find_if(
            items_, [&](const ListItem &listed) { return !listed.plain && sameName(listed.name, item.field); });
        expressions << (alias == items_.end() || item.field.isEmpty() ? item.expression : alias->expression);
    }
    return expressions;
}

QString SelectShape::keys() const
{
    return QStringLiteral("SELECT ") + (QStringList(keyName()) + orderExpressions()).join(QStringLiteral(", ")) + from_
           + filter_;
}

QString SelectShape::someKeys(int count) const
{
    QStringList order = orderExpressions();
    for (std::size_t at = 0; at < order_.size(); ++at)
        order[qsizetype(at)] +=
            order_[at].descending ? QStringLiteral(" DESC NULLS LAST") : QStringLiteral(" NULLS FIRST");
    return QStringLiteral("SELECT ") + keyName() + from_ + filter_
           + (order.isEmpty() ? QString() : QStringLiteral(" ORDER BY ") + order.join(QStringLiteral(", ")))
           + QStringLiteral(" LIMIT ") + QString::number(count);
}

QString SelectShape::rows() const
{
    return withAdded(list_, keyIsAdded() ? QStringList(keyName()) : QStringList()) + from_;
}

} // namespace ado
