#include "desk/exchange/Exchange.h"

#include "desk/exchange/ImportPlan.h"
#include "desk/exchange/StoredRows.h"
#include "desk/files/NewFile.h"
#include "desk/rows/BulkInsert.h"
#include "desk/rows/BulkUpdate.h"
#include "desk/rows/ExactValue.h"
#include "desk/schema/Schema.h"
#include "desk/schema/Statements.h"
#include "platform/ado/Transaction.h"
#include "platform/runtime/CsvText.h"
#include "platform/runtime/RuntimeError.h"

#include <QFile>

#include <algorithm>

namespace exchange {

namespace {

QString textIn(const QString &name)
{
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        schema::refuse(QStringLiteral("파일을 읽을 수 없습니다: %1\n%2").arg(name, file.errorString()));
    return decoded(file.readAll());
}

QStringList columnsOf(const ImportPlan &plan)
{
    QStringList columns;
    for (const Field *field : plan.columns)
        columns << QString::fromLatin1(field->column);
    return columns;
}

void write(ado::Connection &connection, const ImportPlan &plan)
{
    const QString table = QString::fromLatin1(plan.subject->table);
    rows::BulkInsert insert(connection, table, columnsOf(plan));
    for (const Change &change : plan.added)
        insert.add(change.values);
    insert.finish();
    const auto onlyDiffering = [&](const auto &all) {
        auto some = all;
        some.clear();
        for (qsizetype at = 0; at < all.size(); ++at) {
            if (plan.differs[std::size_t(at)])
                some << all[at];
        }
        return some;
    };
    rows::BulkUpdate update(connection, table, QString::fromLatin1(plan.subject->key), onlyDiffering(columnsOf(plan)));
    for (const Change &change : plan.changed)
        update.add(change.key, onlyDiffering(change.values));
    update.finish();
}

} // namespace

Imported importFile(ado::Connection &connection, const QString &file, bool dryRun)
{
    const QString text = textIn(file);
    const std::vector<Record> records = readCsv(text);
    if (records.empty())
        schema::refuse(QStringLiteral("빈 파일입니다."));
    const Header header = readHeader(records.front());
    ado::Transaction scope(connection);
    if (!dryRun)
        schema::holdTables(connection, {QString::fromLatin1(header.subject->table)});
    const ImportPlan plan = planImport(connection, header, records);
    if (!dryRun)
        write(connection, plan);
    scope.commit();
    Imported outcome{
        QString::fromUtf8(plan.subject->what), qint64(plan.added.size()), qint64(plan.changed.size()), plan.same, {}};
    for (const std::vector<Change> *changes : {&plan.added, &plan.changed}) {
        for (const Change &change : *changes)
            outcome.told << QStringLiteral("  %1번째 줄 · ").arg(change.line) + change.told;
    }
    return outcome;
}

qint64 exportProducts(ado::Connection &connection, const QString &file)
{
    const Subject &subject = products();
    std::vector<const Field *> fields;
    QStringList captions;
    for (const Field &field : subject.fields) {
        fields.push_back(&field);
        captions << QString::fromUtf8(field.caption);
    }
    const StoredRows stored(connection, subject, fields);
    QString text = csvLine(captions);
    for (const StoredRow &row : stored.all()) {
        QStringList cells;
        for (std::size_t at = 0; at < fields.size(); ++at) {
            const QString cell = cellOf(*fields[at], row.values[qsizetype(at)]);
            cells << (fields[at]->reads == Reads::Money ? cell : runtime::spreadsheetText(cell));
        }
        text += csvLine(cells);
    }
    files::NewFile made(file, files::NewFile::AsUsual);
    QFile out(made.unfinished());
    const QByteArray bytes = "\xef\xbb\xbf" + text.toUtf8(); // by the mark spreadsheets know Korean
    if (!out.open(QIODevice::WriteOnly) || out.write(bytes) != bytes.size() || !out.flush())
        schema::refuse(QStringLiteral("파일을 저장하지 못했습니다: %1\n%2").arg(file, out.errorString()));
    out.close();
    made.finish();
    return qint64(stored.all().size());
}

} // namespace exchange
