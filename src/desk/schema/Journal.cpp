#include "desk/schema/Journal.h"

#include <algorithm>

namespace schema {

namespace {

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

/// Fills "%name" places, the longest names first where one begins another.
QString fill(QString text, std::initializer_list<std::pair<const char *, QString>> places)
{
    for (const auto &[place, value] : places)
        text.replace(latin(place), value);
    return text;
}

QString fieldOf(const QString &row, const char *column)
{
    return *column ? row + u'.' + latin(column) : QStringLiteral("NULL");
}

/// A line tells its order; the order, while it stands, tells the patient.
QString customerOf(const JournalPlan &plan, const QString &row, const QString &orders)
{
    if (*plan.customer)
        return fieldOf(row, plan.customer);
    return QStringLiteral("(SELECT o.Cust_PK FROM %1 o WHERE o.OrdM_PK = %2)").arg(orders, fieldOf(row, plan.order));
}

struct Event
{
    const char *action;
    const char *name;
    const char *row; ///< whose keys are told
};

constexpr Event Events[]{{"I", "INSERT", "NEW"}, {"U", "UPDATE", "NEW"}, {"D", "DELETE", "OLD"}};

QString anyChange(const TablePlan &table)
{
    QStringList changes;
    for (const ColumnPlan &column : table.columns)
        changes << QStringLiteral("OLD.%1 IS NOT NEW.%1").arg(latin(column.name));
    return QStringLiteral("WHEN ") + changes.join(QStringLiteral(" OR "));
}

QString sqliteTrigger(const QString &name, const JournalPlan &plan, const Event &event)
{
    const TablePlan &table = tableOf(plan);
    const QString row = latin(event.row);
    const bool had = *event.action != 'I', has = *event.action != 'D';
    const QString none = QStringLiteral("NULL");
    return fill(QStringLiteral(R"sql(CREATE TRIGGER %name AFTER %event ON %table %when
BEGIN
    INSERT INTO t_DeskJournal (DJ_Time, DJ_Action, DJ_Table, DJ_Row, DJ_Order, DJ_Customer, DJ_Old, DJ_New)
    VALUES (strftime('%Y-%m-%dT%H:%M:%fZ', 'now'), '%action', '%table', %row, %order, %customer,
            %old, %new);
END)sql"),
                {{"%name", name},
                 {"%event", latin(event.name)},
                 {"%table", latin(plan.table)},
                 {"%when", had && has ? anyChange(table) : QString()},
                 {"%action", latin(event.action)},
                 {"%row", fieldOf(row, table.key().name)},
                 {"%order", fieldOf(row, plan.order)},
                 {"%customer", customerOf(plan, row, QStringLiteral("tPSOrderMaster"))},
                 {"%old", had ? journalledRow(table, QStringLiteral("OLD"), Dialect::SQLite) : none},
                 {"%new", has ? journalledRow(table, QStringLiteral("NEW"), Dialect::SQLite) : none}});
}

QString sqliteGuard(const char *name, const char *event)
{
    return QStringLiteral("CREATE TRIGGER %1 BEFORE %2\nBEGIN\n    SELECT RAISE(ABORT, '변경 이력은 고칠 수 "
                          "없습니다.');\nEND")
        .arg(latin(name), latin(event));
}

QString functionOf(const JournalPlan &plan)
{
    return QStringLiteral("clinic_journal.note_") + latin(plan.table).toLower();
}

QString createFunction(const QString &head, const QString &body)
{
    return QStringLiteral("CREATE OR REPLACE FUNCTION %1 AS $body$%2$body$").arg(head, body);
}

/// As its owner: a desk's role may read the journal only.
QString createTriggerFunction(const QString &name, const QString &body)
{
    return createFunction(name
                              + QStringLiteral("() RETURNS trigger LANGUAGE plpgsql SECURITY DEFINER SET search_path = "
                                               "pg_catalog, pg_temp"),
                          body);
}

/// The text that a row's hash is taken of, with the one before in front: each part with its length, '-' for none. As
/// journal::sealOf makes it.
QString hashedParts()
{
    QStringList parts;
    for (const char *part : {"last", "place::text", "moment", "who", "action", "named", "row_key::text",
                             "order_key::text", "customer_key::text", "old_row", "new_row"})
        parts << QStringLiteral("coalesce(octet_length(%1) || ':' || %1, '-')").arg(latin(part));
    return parts.join(QStringLiteral(" || "));
}

/// Runs at the commit, where the order of commits is the order of the chain. A transaction that cannot see the chain's end
/// leaves its row without a place. Only the functions below may call it.
QString addFunction()
{
    const QString body = QStringLiteral(R"sql(
DECLARE
    moment text := to_char(clock_timestamp() AT TIME ZONE 'UTC', 'YYYY-MM-DD"T"HH24:MI:SS.MS"Z"');
    who text := session_user || coalesce('@' || host(inet_client_addr()), '');
    place bigint;
    last text;
    seal text;
BEGIN
    IF chained AND current_setting('transaction_isolation') = 'read committed' THEN
        PERFORM pg_advisory_xact_lock(%lock);
        SELECT j.DJ_Place, j.DJ_Hash INTO place, last FROM public.t_DeskJournal j
        WHERE j.DJ_Place IS NOT NULL ORDER BY j.DJ_Place DESC LIMIT 1;
        place := coalesce(place, 0) + 1;
        seal := encode(sha256(convert_to(%parts, 'UTF8')), 'hex');
    END IF;
    INSERT INTO public.t_DeskJournal (DJ_Time, DJ_Who, DJ_Action, DJ_Table, DJ_Row, DJ_Order, DJ_Customer, DJ_Old,
                                      DJ_New, DJ_Place, DJ_Hash)
    VALUES (moment, who, action, named, row_key, order_key, customer_key, old_row, new_row, place, seal);
END
)sql");
    return createFunction(
        QStringLiteral(
            "clinic_journal.add(action text, named text, row_key bigint, order_key bigint, "
            "customer_key bigint, old_row text, new_row text, chained boolean) RETURNS void LANGUAGE plpgsql"),
        fill(body, {{"%lock", QString::number(JournalLock)}, {"%parts", hashedParts()}}));
}

/// Whatever goes wrong here, the write itself stands: at worst its row stays out of the chain, or of the journal, which a
/// check tells.
QString noteFunction(const JournalPlan &plan)
{
    const TablePlan &table = tableOf(plan);
    const QString body = QStringLiteral(R"sql(
DECLARE
    action text := left(TG_OP, 1);
    row_key bigint;
    order_key bigint;
    customer_key bigint;
    old_row text;
    new_row text;
BEGIN
    IF action <> 'I' THEN
        old_row := %old;
    END IF;
    IF action = 'D' THEN
        row_key := OLD.%key;
        order_key := OLD.%order;
        customer_key := %was;
    ELSE
        new_row := %new;
        row_key := NEW.%key;
        order_key := NEW.%order;
        customer_key := %is;
    END IF;
    IF old_row = new_row THEN
        RETURN NULL;
    END IF;
    PERFORM clinic_journal.add(action, '%table', row_key, order_key, customer_key, old_row, new_row, true);
    RETURN NULL;
EXCEPTION WHEN OTHERS THEN
    BEGIN
        PERFORM clinic_journal.add(action, '%table', row_key, order_key, customer_key, old_row, new_row, false);
    EXCEPTION WHEN OTHERS THEN
        RAISE WARNING 'journal: %', SQLERRM;
    END;
    RETURN NULL;
END
)sql");
    const QString orders = QStringLiteral("public.tPSOrderMaster");
    return createTriggerFunction(functionOf(plan),
                                 fill(body, {{"%old", journalledRow(table, QStringLiteral("OLD"), Dialect::PostgreSQL)},
                                             {"%new", journalledRow(table, QStringLiteral("NEW"), Dialect::PostgreSQL)},
                                             {"%table", latin(plan.table)},
                                             {"%key", latin(table.key().name)},
                                             {"%order", latin(plan.order)},
                                             {"%was", customerOf(plan, QStringLiteral("OLD"), orders)},
                                             {"%is", customerOf(plan, QStringLiteral("NEW"), orders)}}));
}

QString guardFunction()
{
    return createTriggerFunction(QStringLiteral("clinic_journal.guard"), QStringLiteral(R"sql(
BEGIN
    IF TG_OP = 'UPDATE' THEN
        IF OLD.DJ_Place IS NULL THEN
            RETURN NEW;
        END IF;
    END IF;
    RAISE EXCEPTION '변경 이력은 고칠 수 없습니다.';
END
)sql"));
}

} // namespace

std::span<const JournalPlan> journalPlans()
{
    static const JournalPlan plans[]{{"tPSOrderMaster", "OrdM_PK", "Cust_PK"},
                                     {"tPSOrderDetail", "OrdM_PK", ""},
                                     {"tPSTransaction", "tpstrans_OrderM_PK", "tpstrans_Customer_PK"}};
    return plans;
}

const TablePlan &tableOf(const JournalPlan &plan)
{
    return *std::ranges::find_if(tablePlans(),
                                 [&](const TablePlan &table) { return latin(table.name) == latin(plan.table); });
}

QString journalledRow(const TablePlan &table, const QString &row, Dialect dialect)
{
    const bool server = dialect == Dialect::PostgreSQL;
    QStringList members;
    for (const ColumnPlan &column : table.columns) {
        QString value = fieldOf(row, column.name);
        // Money stays the exact text that it is; bytes where a text should be would be refused.
        if (server && column.holds == Holds::Money)
            value += QStringLiteral("::text");
        else if (!server && (column.holds == Holds::Text || column.holds == Holds::Date))
            value = QStringLiteral("CAST(%1 AS TEXT)").arg(value);
        members << QStringLiteral("'%1', %2").arg(latin(column.name), value);
    }
    return QStringLiteral("%1(%2)%3")
        .arg(server ? QStringLiteral("json_build_object") : QStringLiteral("json_object"),
             members.join(QStringLiteral(", ")), server ? QStringLiteral("::text") : QString());
}

QStringList journalTableStatements(Dialect dialect)
{
    const bool server = dialect == Dialect::PostgreSQL;
    QStringList statements{
        fill(QStringLiteral("CREATE TABLE t_DeskJournal (\n"
                            "    DJ_PK %key,\n"
                            "    DJ_Time text NOT NULL,\n"
                            "    DJ_Who text,\n"
                            "    DJ_Action text NOT NULL,\n"
                            "    DJ_Table text NOT NULL,\n"
                            "    DJ_Row bigint,\n"
                            "    DJ_Order bigint,\n"
                            "    DJ_Customer bigint,\n"
                            "    DJ_Old text,\n"
                            "    DJ_New text,\n"
                            "    DJ_Place bigint,\n"
                            "    DJ_Hash text\n"
                            ")"),
             {{"%key", server ? QStringLiteral("bigint GENERATED ALWAYS AS IDENTITY PRIMARY KEY")
                              : QStringLiteral("INTEGER PRIMARY KEY AUTOINCREMENT")}}),
        // Rows come without a place in the embedded engine, and get it at once: one visit of the index instead of three.
        QStringLiteral("CREATE UNIQUE INDEX ixJournalPlace ON t_DeskJournal (DJ_Place) WHERE DJ_Place IS NOT NULL"),
        QStringLiteral("CREATE INDEX ixJournalTime ON t_DeskJournal (DJ_Time)"),
        QStringLiteral("CREATE INDEX ixJournalCustomer ON t_DeskJournal (DJ_Customer, DJ_Order)"),
    };
    return statements;
}

QStringList journalFunctionStatements()
{
    QStringList statements{QStringLiteral("CREATE SCHEMA IF NOT EXISTS clinic_journal"), addFunction(),
                           guardFunction()};
    for (const JournalPlan &plan : journalPlans())
        statements << noteFunction(plan);
    return statements;
}

std::vector<JournalTrigger> journalTriggers(Dialect dialect)
{
    const QString journal = QStringLiteral("t_DeskJournal");
    std::vector<JournalTrigger> triggers;
    if (dialect == Dialect::PostgreSQL) {
        for (const JournalPlan &plan : journalPlans())
            triggers.push_back({QStringLiteral("journal"), latin(plan.table),
                                QStringLiteral("CREATE CONSTRAINT TRIGGER journal AFTER INSERT OR DELETE OR UPDATE ON "
                                               "%1 DEFERRABLE INITIALLY DEFERRED FOR EACH ROW EXECUTE FUNCTION %2()")
                                    .arg(latin(plan.table), functionOf(plan))});
        triggers.push_back({QStringLiteral("journal_guard"), journal,
                            QStringLiteral("CREATE TRIGGER journal_guard BEFORE DELETE OR UPDATE ON t_DeskJournal FOR "
                                           "EACH ROW EXECUTE FUNCTION clinic_journal.guard()")});
        triggers.push_back({QStringLiteral("journal_kept"), journal,
                            QStringLiteral("CREATE TRIGGER journal_kept BEFORE TRUNCATE ON t_DeskJournal FOR EACH "
                                           "STATEMENT EXECUTE FUNCTION clinic_journal.guard()")});
        return triggers;
    }
    for (const JournalPlan &plan : journalPlans()) {
        for (const Event &event : Events) {
            const QString name = QStringLiteral("journal_%1_%2").arg(latin(plan.table), latin(event.action));
            triggers.push_back({name, latin(plan.table), sqliteTrigger(name, plan, event)});
        }
    }
    triggers.push_back({QStringLiteral("journal_guard_U"), journal,
                        sqliteGuard("journal_guard_U", "UPDATE ON t_DeskJournal WHEN OLD.DJ_Place IS NOT NULL")});
    triggers.push_back(
        {QStringLiteral("journal_guard_D"), journal, sqliteGuard("journal_guard_D", "DELETE ON t_DeskJournal")});
    return triggers;
}

QStringList journalBeginStatements(Dialect dialect)
{
    QStringList statements;
    for (const JournalPlan &plan : journalPlans()) {
        const QString table = latin(plan.table), key = latin(tableOf(plan).key().name);
        statements << (dialect == Dialect::PostgreSQL
                           ? QStringLiteral("SELECT clinic_journal.add('B', '%1', (SELECT COALESCE(MAX(%2), 0) FROM "
                                            "%1), NULL, NULL, NULL, NULL, true)")
                           : QStringLiteral("INSERT INTO t_DeskJournal (DJ_Time, DJ_Action, DJ_Table, DJ_Row) SELECT "
                                            "strftime('%Y-%m-%dT%H:%M:%fZ', 'now'), 'B', '%1', COALESCE(MAX(%2), 0) "
                                            "FROM %1"))
                          .replace(QStringLiteral("%1"), table)
                          .replace(QStringLiteral("%2"), key);
    }
    return statements;
}

} // namespace schema
