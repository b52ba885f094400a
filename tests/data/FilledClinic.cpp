#include "tests/data/FilledClinic.h"

#include "desk/schema/Schema.h"
#include "desk/schema/Tables.h"
#include "platform/ado/Transaction.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/RuntimeError.h"
#include "tests/support/Statements.h"

#include <map>

namespace clinic {

namespace {

struct Kept
{
    std::unique_ptr<TestDatabase> database;
    bool clean = false;
};

/// One database an engine for the whole program, closed before the servers stop.
class Databases : public testing::Environment
{
public:
    void TearDown() override { kept.clear(); }

    std::map<ado::Engine, Kept> kept;
};

Databases &databases()
{
    static Databases *all = [] {
        auto *made = new Databases;
        testing::AddGlobalTestEnvironment(made);
        return made;
    }();
    return *all;
}

// Known to the test program from its start.
[[maybe_unused]] const Databases &registered = databases();

void fill(ado::Connection &connection)
{
    ado::Transaction scope(connection);
    // New keys go on from those below, on every engine alike.
    const bool embedded = connection.engine() == ado::Engine::SQLite;
    const QString empty = embedded ? QStringLiteral("DELETE FROM %1")
                          : connection.engine() == ado::Engine::MariaDB
                              ? QStringLiteral("TRUNCATE TABLE %1")
                              : QStringLiteral("TRUNCATE %1 RESTART IDENTITY");
    for (const schema::TablePlan &table : schema::tablePlans())
        connection.Execute(empty.arg(QString::fromLatin1(table.name)));
    if (embedded)
        connection.Execute(QStringLiteral("DELETE FROM sqlite_sequence"));
    for (const QString &statement : statementsOf("data/clinic.sql"))
        connection.Execute(statement);
    schema::continueKeys(connection);
    scope.commit();
}

Kept &keptOf(ado::Engine engine)
{
    Kept &kept = databases().kept[engine];
    if (!kept.database)
        kept.database = std::make_unique<TestDatabase>(engine);
    if (!kept.clean)
        fill(*kept.database->connection());
    kept.clean = true;
    return kept;
}

QString shown(const QVariant &value)
{
    if (runtime::isNull(value))
        return QStringLiteral("NULL");
    return QString::fromLatin1(value.typeName()) + u' ' + runtime::text(value);
}

} // namespace

TestDatabase &filled(ado::Engine engine)
{
    return *keptOf(engine).database;
}

TestDatabase &filledToWrite(ado::Engine engine)
{
    Kept &kept = keptOf(engine);
    kept.clean = false;
    return *kept.database;
}

QStringList render(ado::Recordset &rows)
{
    QStringList lines{rows.fieldNames().join(u'|').toLower()};
    for (; rows.hasCurrent(); rows.MoveNext()) {
        QStringList cells;
        for (const QString &field : rows.fieldNames())
            cells += shown(rows[field]);
        lines += cells.join(u'|');
    }
    return lines;
}

QStringList rowsOf(const QString &statement, const ado::ConnectionPtr &connection, ado::CursorType cursor)
{
    try {
        ado::Recordset rows;
        rows.Open(statement, connection, cursor, ado::LockType::ReadOnly);
        return render(rows);
    } catch (const runtime::RuntimeError &) {
        return {QStringLiteral("refused")};
    }
}

} // namespace clinic
