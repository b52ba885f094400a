#pragma once

#include "platform/ado/RowKey.h"
#include "platform/ado/SqlText.h"
#include "platform/ado/TableRegistry.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace ado {

struct OrderItem
{
    QString expression; ///< as the statement writes it; empty when it only makes sense in an ORDER BY
    QString field;      ///< last part of a plain column name or an alias, empty for an expression
    bool descending = false;
};

/// What the layer has to know of a SELECT: whether its rows have a key, which table they belong to and how they are
/// ordered; and the texts made from it.
///
/// Rows are keyed when they are rows of one registered table, alone or joined to others by JOIN: no grouping, no
/// function call among the columns, no DISTINCT, no row limit. The first table is the one that is written to.
class SelectShape
{
public:
    /// Raises Database when the text is not exactly one SELECT.
    SelectShape(const QString &statement, Dialect dialect);

    /// The table that keys and takes the rows; null when they are not keyed.
    const Table *base() const { return base_; }
    /// What its rows are known by: what was told of the table, or what it turned out to have.
    const QString &key() const { return key_.name; }
    const QString &keyText() const { return key_.text; }
    void setKey(RowKey key) { key_ = std::move(key); }
    /// Whether a row shows all that there is to tell it from others: plain columns of one table.
    bool showsRows() const;
    /// More than one table: a key may come more than once.
    bool joined() const { return sources_.size() > 1; }
    /// Every row of one table, in the order of its own columns: nothing else tells on them.
    bool isWholeTable() const;
    /// Whether each row of one table tells by its own columns if it is on the list, and what stands there: as long as the
    /// table is the same the list is.
    bool tellsRowsByThemselves() const;
    /// Whether a column of the result is the base table's own.
    const Column *baseColumn(const QString &field) const;

    const std::vector<OrderItem> &order() const { return order_; }

    /// Expressions that all() adds behind the statement's own columns: the key and order columns that are not among them.
    QStringList added() const;
    bool keyIsAdded() const;

    /// The statement as it was told.
    QString whole() const { return list_ + from_ + filter_ + orderText_ + limit_; }
    /// Every row, in any order where it can be ordered here.
    QString all() const;
    /// Of them those whose keyName() the caller tells behind this text, where rows tell by themselves.
    QString allAmong() const;
    /// How many there are on the list, and in its table, which the engine tells sooner.
    QString count() const { return countInTable() + filter_; }
    QString countInTable() const { return QStringLiteral("SELECT COUNT(*)") + from_; }
    /// Whether all() can be put in order here, and has a key by which some of its rows can be asked for.
    bool takesFirstRows() const { return base_ && !key_.name.isEmpty() && extensible_ && !order_.empty(); }
    /// The columns of all(), of rows whose keyName() the caller tells behind this text.
    QString allOfKeys() const;
    /// The key, then one column for each order item, of every row.
    QString keys() const;
    /// The key alone, of so many rows as stand first by the server's own rules, which may be others than this layer's.
    QString someKeys(int count) const;
    /// The statement's columns, and the key if it is added, of rows whose keyName() the caller tells behind this text.
    QString rows() const;
    QString keyName() const;
    /// The statement's columns behind a RETURNING.
    QString returned() const;

private:
    friend class SelectParser;

    struct Source
    {
        const Table *table = nullptr; ///< null when it is not registered
        QString name;                 ///< alias or table name, as it stands
    };
    struct ListItem
    {
        QString name;       ///< in the result; "*" for all columns, empty for an expression without a name
        QString qualifier;  ///< of a plain column or of "*"
        QString expression; ///< without the alias
        bool plain = false; ///< a column under its own name, or "*"
    };

    QStringList orderExpressions() const;
    bool listHolds(const QString &field) const;

    QString list_;
    QString from_;
    QString filter_;    ///< WHERE and grouping, with their words
    QString condition_; ///< of the filter, where it compares nothing but columns of the table; else empty
    QString orderText_;
    QString limit_;
    std::vector<Source> sources_;
    std::vector<ListItem> items_;
    std::vector<OrderItem> order_;
    const Table *base_ = nullptr;
    RowKey key_;
    bool plainFrom_ = false;  ///< one table by its bare name, and nothing else
    bool extensible_ = false; ///< columns can be added and the order taken over
};

} // namespace ado
