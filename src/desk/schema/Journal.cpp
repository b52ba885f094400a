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
QString customerOf(const JournalPlan &plan, const QString &row, Dialect dialect)
{
    if (*plan.customer)
        return fieldOf(row, plan.customer);
    return (dialect == Dialect::PostgreSQL
                ? QStringLiteral(
                    "(SELECT o.Cust_PK FROM public.tPSOrderMaster o WHERE o.OrdM_PK OPERATOR(pg_catalog.=) "
                    "%1)")
                : QStringLiteral("(SELECT o.Cust_PK FROM tPSOrderMaster o WHERE o.OrdM_PK = %1)"))
        .arg(fieldOf(row, plan.order));
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
                 {"%customer", customerOf(plan, row, Dialect::SQLite)},
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

/// What a row of the journal tells, as SQL.
struct Told
{
    QString action, table, row, order, customer, old, now, from{};
};

/// Names nothing that a session's search_path could turn to something of its own.
QString addRow(const Told &told)
{
    return QStringLiteral(R"sql(INSERT INTO public.t_DeskJournal (DJ_Time, DJ_Who, DJ_Action, DJ_Table, DJ_Row,
            DJ_Order, DJ_Customer, DJ_Old, DJ_New)
        SELECT pg_catalog.to_char(pg_catalog.clock_timestamp() AT TIME ZONE 'UTC', 'YYYY-MM-DD"T"HH24:MI:SS.MS"Z"'),
            pg_catalog.concat(session_user, '@' OPERATOR(pg_catalog.||) pg_catalog.host(pg_catalog.inet_client_addr())),
            )sql")
           + QStringList{told.action, told.table, told.row, told.order, told.customer, told.old, told.now}.join(
               QStringLiteral(", "))
           + told.from + u';';
}

/// For what is no row's change; its owner's alone.
QString writeFunction()
{
    const auto given = [](const char *name) { return QLatin1String(name); };
    return createFunction(
        QStringLiteral("clinic_journal.write(action text, named text, row_key bigint, order_key bigint, customer_key "
                       "bigint, old_row text, new_row text) RETURNS void LANGUAGE plpgsql"),
        QStringLiteral("\nBEGIN\n    ")
            + addRow({given("action"), given("named"), given("row_key"), given("order_key"), given("customer_key"),
                      given("old_row"), given("new_row")})
            + QStringLiteral("\nEND\n"));
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

/// One statement for each event: a desk waits for what is done here. As its owner, since a desk's role may read the journal
/// only, and without a search_path of its own, which would cost as much as the rest.
QString noteFunction(const JournalPlan &plan)
{
    const TablePlan &table = tableOf(plan);
    const auto row = [&](const char *name) { return journalledRow(table, QLatin1String(name), Dialect::PostgreSQL); };
    const auto added = [&](const Event &event, const QString &old, const QString &now, const QString &from) {
        const QString whose = latin(event.row), quote(u'\'');
        return addRow({quote + latin(event.action) + quote, quote + latin(plan.table) + quote,
                       fieldOf(whose, table.key().name), fieldOf(whose, plan.order),
                       customerOf(plan, whose, Dialect::PostgreSQL), old, now, from});
    };
    const QString none = QStringLiteral("NULL");
    const auto &[insertion, update, deletion] = Events;
    // Whatever goes wrong here, the write itself stands: at worst it stays out of the journal, which a check tells.
    const QString body = QStringLiteral(R"sql(
BEGIN
    IF TG_OP OPERATOR(pg_catalog.=) 'INSERT' THEN
        %insert
    ELSIF TG_OP OPERATOR(pg_catalog.=) 'UPDATE' THEN
        %update
    ELSE
        %delete
    END IF;
    RETURN NULL;
EXCEPTION WHEN OTHERS THEN
    RAISE WARNING 'journal: %', SQLERRM;
    RETURN NULL;
END
)sql");
    const QString both = QStringLiteral("\n        FROM (SELECT %1 AS was, %2 AS now OFFSET 0) r WHERE r.was "
                                        "OPERATOR(pg_catalog.<>) r.now")
                             .arg(row("OLD"), row("NEW"));
    return createFunction(
        functionOf(plan) + QStringLiteral("() RETURNS trigger LANGUAGE plpgsql SECURITY DEFINER"),
        fill(body, {{"%insert", added(insertion, none, row("NEW"), {})},
                    {"%update", added(update, QStringLiteral("r.was"), QStringLiteral("r.now"), both)},
                    {"%delete", added(deletion, row("OLD"), none, {})}}));
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
            value += QStringLiteral("::pg_catalog.text");
        else if (!server && (column.holds == Holds::Text || column.holds == Holds::Date))
            value = QStringLiteral("CAST(%1 AS TEXT)").arg(value);
        members << QStringLiteral("'%1', %2").arg(latin(column.name), value);
    }
    return QStringLiteral("%1(%2)%3")
        .arg(server ? QStringLiteral("pg_catalog.json_build_object") : QStringLiteral("json_object"),
             members.join(QStringLiteral(", ")), server ? QStringLiteral("::pg_catalog.text") : QString());
}

QStringList journalTableStatements(Dialect dialect)
{
    const bool server = dialect == Dialect::PostgreSQL;
    // Whoever writes visits no index but a server's of what is open: the others fill when the rows are sealed.
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
        QStringLiteral("CREATE UNIQUE INDEX ixJournalPlace ON t_DeskJournal (DJ_Place) WHERE DJ_Place IS NOT NULL"),
        // Of a day one looks for what was changed and deleted; most rows are neither.
        QStringLiteral("CREATE INDEX ixJournalTime ON t_DeskJournal (DJ_Time) WHERE DJ_Action <> 'I' AND DJ_Place IS "
                       "NOT NULL"),
        QStringLiteral("CREATE INDEX ixJournalCustomer ON t_DeskJournal (DJ_Customer, DJ_Order) WHERE DJ_Place IS NOT "
                       "NULL"),
    };
    if (server)
        statements << QStringLiteral("CREATE INDEX ixJournalOpen ON t_DeskJournal (DJ_PK) WHERE DJ_Place IS NULL");
    return statements;
}

QString journalOpenRows(Dialect dialect)
{
    const QString open = QStringLiteral("DJ_Place IS NULL");
    return dialect == Dialect::PostgreSQL
               ? open
               : open
                     + QStringLiteral(
                         " AND DJ_PK > COALESCE((SELECT s.DJ_PK FROM t_DeskJournal s WHERE s.DJ_Place IS NOT NULL "
                         "ORDER BY s.DJ_Place DESC LIMIT 1), 0)");
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
