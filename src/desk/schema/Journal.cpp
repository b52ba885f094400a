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

QString sqliteGuard(const char *name, const QString &event)
{
    return QStringLiteral("CREATE TRIGGER %1 BEFORE %2\nBEGIN\n    SELECT RAISE(ABORT, '변경 이력은 고칠 수 "
                          "없습니다.');\nEND")
        .arg(latin(name), event);
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
    for (const char *part :
         {"last", "place::text", "one.DJ_Time", "one.DJ_Who", "one.DJ_Action", "one.DJ_Table", "one.DJ_Row::text",
          "one.DJ_Order::text", "one.DJ_Customer::text", "one.DJ_Old", "one.DJ_New"})
        parts << QStringLiteral("coalesce(octet_length(%1) || ':' || %1, '-')").arg(latin(part));
    return parts.join(QStringLiteral(" || "));
}

/// Only the functions below may call it.
QString writeFunction()
{
    return createFunction(
        QStringLiteral("clinic_journal.write(action text, named text, row_key bigint, order_key bigint, customer_key "
                       "bigint, old_row text, new_row text) RETURNS void LANGUAGE plpgsql"),
        QStringLiteral(R"sql(
BEGIN
    INSERT INTO public.t_DeskJournal (DJ_Time, DJ_Who, DJ_Action, DJ_Table, DJ_Row, DJ_Order, DJ_Customer, DJ_Old, DJ_New)
    VALUES (to_char(clock_timestamp() AT TIME ZONE 'UTC', 'YYYY-MM-DD"T"HH24:MI:SS.MS"Z"'),
            session_user || coalesce('@' || host(inet_client_addr()), ''), action, named, row_key, order_key, customer_key,
            old_row, new_row);
END
)sql"));
}

/// Whoever writes does not seal: the chain has one end, and desks that commit would wait for each other's disk there. A desk
/// has it done shortly afterwards, for everybody's rows; one at a time. A transaction that cannot see the chain's end does
/// nothing.
QString sealFunction()
{
    const QString body = QStringLiteral(R"sql(
DECLARE
    one record;
    place bigint;
    last text;
    sealed bigint := 0;
BEGIN
    IF current_setting('transaction_isolation') <> 'read committed' OR NOT pg_try_advisory_xact_lock(%lock) THEN
        RETURN 0;
    END IF;
    SELECT j.DJ_Place, j.DJ_Hash INTO place, last FROM public.t_DeskJournal j
    WHERE j.DJ_Place IS NOT NULL ORDER BY j.DJ_Place DESC LIMIT 1;
    place := coalesce(place, 0);
    FOR one IN SELECT j.* FROM public.t_DeskJournal j WHERE j.DJ_Place IS NULL ORDER BY j.DJ_PK LIMIT %most LOOP
        place := place + 1;
        last := encode(sha256(convert_to(%parts, 'UTF8')), 'hex');
        UPDATE public.t_DeskJournal SET DJ_Place = place, DJ_Hash = last WHERE DJ_PK = one.DJ_PK;
        sealed := sealed + 1;
    END LOOP;
    RETURN sealed;
END
)sql");
    return createFunction(QStringLiteral("clinic_journal.seal() RETURNS bigint LANGUAGE plpgsql SECURITY DEFINER SET "
                                         "search_path = pg_catalog, pg_temp"),
                          fill(body, {{"%lock", QString::number(JournalLock)},
                                      {"%most", QString::number(SealedAtOnce)},
                                      {"%parts", hashedParts()}}));
}

/// Whatever goes wrong here, the write itself stands: at worst it stays out of the journal, which a check tells.
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
    PERFORM clinic_journal.write(action, '%table', row_key, order_key, customer_key, old_row, new_row);
    RETURN NULL;
EXCEPTION WHEN OTHERS THEN
    RAISE WARNING 'journal: %', SQLERRM;
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

/// What a row of the journal says, and what never changes.
constexpr const char *SaidColumns[]{"DJ_PK",    "DJ_Time",     "DJ_Action", "DJ_Table", "DJ_Row",
                                    "DJ_Order", "DJ_Customer", "DJ_Old",    "DJ_New"};

QString saidColumns(const QString &before = {})
{
    QStringList columns;
    for (const char *column : SaidColumns)
        columns << before + latin(column);
    return columns.join(QStringLiteral(", "));
}

QString guardFunction()
{
    return createTriggerFunction(
        QStringLiteral("clinic_journal.guard"),
        fill(QStringLiteral(R"sql(
BEGIN
    IF TG_OP = 'UPDATE' THEN
        IF OLD.DJ_Place IS NULL AND (%was, OLD.DJ_Who) IS NOT DISTINCT FROM (%is, NEW.DJ_Who) THEN
            RETURN NEW;
        END IF;
    END IF;
    RAISE EXCEPTION '변경 이력은 고칠 수 없습니다.';
END
)sql"),
             {{"%was", saidColumns(QStringLiteral("OLD."))}, {"%is", saidColumns(QStringLiteral("NEW."))}}));
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
        // Two halves: who writes visits the small one, who seals moves the rows to the other.
        QStringLiteral("CREATE INDEX ixJournalOpen ON t_DeskJournal (DJ_PK) WHERE DJ_Place IS NULL"),
        QStringLiteral("CREATE UNIQUE INDEX ixJournalPlace ON t_DeskJournal (DJ_Place) WHERE DJ_Place IS NOT NULL"),
        // Of a day one looks for what was changed and deleted; most rows are neither.
        QStringLiteral("CREATE INDEX ixJournalTime ON t_DeskJournal (DJ_Time) WHERE DJ_Action <> 'I'"),
        QStringLiteral("CREATE INDEX ixJournalCustomer ON t_DeskJournal (DJ_Customer, DJ_Order)"),
    };
    return statements;
}

QStringList journalFunctionStatements()
{
    QStringList statements{QStringLiteral("CREATE SCHEMA IF NOT EXISTS clinic_journal"), writeFunction(),
                           sealFunction(), guardFunction()};
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
                                QStringLiteral("CREATE TRIGGER journal AFTER INSERT OR DELETE OR UPDATE ON %1 FOR EACH "
                                               "ROW EXECUTE FUNCTION %2()")
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
    const std::pair<const char *, QString> guards[]{
        {"journal_guard_C", QStringLiteral("UPDATE OF %1 ON t_DeskJournal").arg(saidColumns())},
        {"journal_guard_U", QStringLiteral("UPDATE ON t_DeskJournal WHEN OLD.DJ_Place IS NOT NULL OR OLD.DJ_Who IS NOT "
                                           "NULL AND OLD.DJ_Who IS NOT NEW.DJ_Who")},
        {"journal_guard_D", QStringLiteral("DELETE ON t_DeskJournal")}};
    for (const auto &[name, event] : guards)
        triggers.push_back({latin(name), journal, sqliteGuard(name, event)});
    return triggers;
}

QStringList journalBeginStatements(Dialect dialect)
{
    QStringList statements;
    for (const JournalPlan &plan : journalPlans()) {
        const QString table = latin(plan.table), key = latin(tableOf(plan).key().name);
        statements << (dialect == Dialect::PostgreSQL
                           ? QStringLiteral("SELECT clinic_journal.write('B', '%1', (SELECT COALESCE(MAX(%2), 0) "
                                            "FROM %1), NULL, NULL, NULL, NULL)")
                           : QStringLiteral("INSERT INTO t_DeskJournal (DJ_Time, DJ_Action, DJ_Table, DJ_Row) SELECT "
                                            "strftime('%Y-%m-%dT%H:%M:%fZ', 'now'), 'B', '%1', COALESCE(MAX(%2), 0) "
                                            "FROM %1"))
                          .replace(QStringLiteral("%1"), table)
                          .replace(QStringLiteral("%2"), key);
    }
    return statements;
}

} // namespace schema
