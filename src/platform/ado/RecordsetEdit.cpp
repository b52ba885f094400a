#include "platform/ado/ColumnValue.h"
#include "platform/ado/ConnectionPrivate.h"
#include "platform/ado/Recordset.h"
#include "platform/ado/RecordsetPrivate.h"
#include "platform/runtime/RuntimeError.h"

#include <QPointer>

#include <algorithm>

namespace ado {

using runtime::ErrorNumber;
using runtime::RuntimeError;

const Column *Recordset::Private::writable(const QString &field) const
{
    column(field);
    if (!takesEdits())
        throw RuntimeError(ErrorNumber::InvalidCall, QStringLiteral("이 목록은 수정할 수 없습니다."));
    const Column *const own = rows->shape().baseColumn(field);
    const bool isKey = own && own->name == rows->shape().key();
    if (!own || own->type == ColumnType::Key || (isKey && !adding))
        throw RuntimeError(ErrorNumber::InvalidCall, QStringLiteral("'%1' 항목은 수정할 수 없습니다.").arg(field));
    return own;
}

/// The row itself, as long as the compared columns are as they were last read: another desk's change must not be overwritten
/// unseen, nor go with a deleted row.
void Recordset::Private::addConditions(Command &command, Compared compared) const
{
    const SelectShape &shape = rows->shape();
    command << u" WHERE ";
    if (rows->byContent())
        return addContentOfOneRow(command);
    command << shape.keyText();
    command.equals(parameter(rows->key(position)));
    for (int at = 0; at < static_cast<int>(rows->columns().size()); ++at) {
        const Column *const own = shape.baseColumn(rows->columns()[static_cast<std::size_t>(at)].name);
        if (!own || own->type == ColumnType::Key || (compared == Compared::Assigned && !assigned.contains(own)))
            continue;
        command << u" AND " << own->name;
        command.equals(current.raw(at));
    }
}

void Recordset::Private::addContent(Command &command) const
{
    QStringView separator;
    for (int at = 0; at < static_cast<int>(rows->columns().size()); ++at) {
        const ResultColumn &column = rows->columns()[static_cast<std::size_t>(at)];
        const bool known = rows->shape().baseColumn(column.name);
        const QVariant value = current.raw(at);
        command << std::exchange(separator, u" AND ");
        command << (known ? column.name : u'"' + QString(column.name).replace(u'"', QStringLiteral("\"\"")) + u'"');
        // What another program's column holds only the server knows; it reads a text as that.
        const bool asText = !known && value.isValid() && connection->engine() != Engine::SQLite;
        command.equals(asText ? QVariant(value.toString()) : value);
    }
}

/// Rows without a key may be alike, and then nobody can tell which was meant.
void Recordset::Private::addContentOfOneRow(Command &command) const
{
    addContent(command);
    command << u" AND (SELECT COUNT(*) FROM " << rows->shape().base()->name << u" WHERE ";
    addContent(command);
    command << u") = 1";
}

void Recordset::Private::requireTouched(int touched) const
{
    if (touched != 0)
        return;
    if (rows->byContent()) {
        Connection::Private &layer = connection->layer();
        const QString &table = rows->shape().base()->name;
        Command alike = layer.driver->command() << u"SELECT COUNT(*) FROM " << table << u" WHERE ";
        addContent(alike);
        if (layer.read(alike).raw(0, 0).toInt() > 1)
            throw RuntimeError(ErrorNumber::InvalidCall,
                               QStringLiteral("내용이 똑같은 행이 둘 이상이어서 구별할 수 없습니다. 저장하지 "
                                              "않았습니다.\n개발사로 문의하여 테이블에 키를 추가하십시오: ")
                                   + table);
    }
    raiseConflict();
}

/// One kind of server cannot tell which row it has changed, nor look at a table in the statement that changes it.
void Recordset::Private::requireAnswers() const
{
    if (connection->layer().driver->dialect() == Dialect::MariaDB)
        throw RuntimeError(ErrorNumber::InvalidCall,
                           QStringLiteral("키가 없는 테이블이라 이 서버에서는 수정하거나 삭제할 수 없습니다.\n개발사로 "
                                          "문의하여 테이블에 키를 추가하십시오: ")
                               + rows->shape().base()->name);
}

void Recordset::Private::updateRow(Then then)
{
    Connection::Private &layer = connection->layer();
    Command command = layer.driver->command() << u"UPDATE " << rows->shape().base()->name << u" SET ";
    QStringView separator;
    for (const auto &[column, value] : assigned) {
        command << std::exchange(separator, u", ") << column->name << u" = ";
        command.value(parameter(value));
    }
    addConditions(command, Compared::Assigned);
    if (rows->byContent()) {
        requireAnswers();
        const auto written = std::make_shared<CellTable>(layer.readBack(command << rows->shape().returned()));
        requireTouched(written->rowCount());
        rows->rewrite(position, {written, 0});
    } else {
        requireTouched(layer.write(command));
    }
    standOnWritten(position, then);
}

void Recordset::Private::insertRow(Then then)
{
    Connection::Private &layer = connection->layer();
    const Table &table = *rows->shape().base();
    Command command = layer.driver->command() << u"INSERT INTO " << table.name;
    QStringList names;
    for (const auto &[column, value] : assigned)
        names << column->name;
    if (!names.isEmpty())
        command << u" (" << names.join(QStringLiteral(", ")) << u")";
    const bool empties = layer.driver->dialect() == Dialect::MariaDB;
    command << (!names.isEmpty() ? u" VALUES (" : empties ? u" () VALUES ()" : u" DEFAULT VALUES");
    QStringView separator;
    for (const auto &[column, value] : assigned) {
        command << std::exchange(separator, u", ");
        command.value(parameter(value));
    }
    if (!names.isEmpty())
        command << u")";
    command << (rows->byContent() ? rows->shape().returned() : QStringLiteral(" RETURNING ") + rows->shape().keyText());
    const auto answer = std::make_shared<CellTable>(layer.readBack(command));
    if (answer->rowCount() == 0) // a trigger of the server's may drop a row without an error
        throw RuntimeError(
            ErrorNumber::Database,
            QStringLiteral("새로 입력한 내용이 저장되지 않았습니다. 다시 시도하고, 계속되면 개발사로 문의하십시오."));
    discardPending();
    standOnWritten(rows->byContent() ? rows->append(RowImage{answer, 0}) : rows->append(keyValue(*answer, 0, 0)), then);
}

void Recordset::Private::deleteRow()
{
    Connection::Private &layer = connection->layer();
    if (rows->byContent())
        requireAnswers();
    Command command = layer.driver->command() << u"DELETE FROM " << rows->shape().base()->name;
    addConditions(command, Compared::All);
    requireTouched(layer.write(command));
    rows->remove(position);
}

void Recordset::setValue(const QString &field, const QVariant &value)
{
    const Column *const column = d->writable(field);
    d->refreshUndone();
    d->requireCurrent();
    d->assigned[column] = assigned(value, column->type);
}

void Recordset::AddNew()
{
    d->open();
    if (!d->takesEdits())
        throw RuntimeError(ErrorNumber::InvalidCall, QStringLiteral("이 목록에는 추가할 수 없습니다."));
    d->discardPending();
    d->adding = true;
}

void Recordset::Update(Then then)
{
    d->open();
    const ConnectionPtr connection = d->connection;
    const bool added = d->adding;
    const bool writes = added || !d->assigned.empty();
    if (added)
        d->insertRow(then);
    else
        d->requireCurrent();
    if (!added && writes)
        d->updateRow(then);
    if (then == Then::Commit)
        connection->CommitTrans();
    if (added)
        emit rowsReset();
    else if (writes)
        emit rowRead(d->position);
}

void Recordset::CancelUpdate()
{
    d->open();
    d->discardPending();
}

void Recordset::Delete()
{
    d->open();
    if (d->adding || !d->takesEdits())
        throw RuntimeError(ErrorNumber::InvalidCall, QStringLiteral("삭제할 수 없는 행입니다."));
    d->discardPending();
    d->refreshUndone();
    d->requireCurrent();
    const int removed = d->position;
    d->deleteRow();
    d->standOnWritten(std::min(removed, d->rows->count() - 1));
    const QPointer<Recordset> alive(this);
    emit rowRemoved(removed);
    if (alive)
        emit rowChanged();
}

} // namespace ado
