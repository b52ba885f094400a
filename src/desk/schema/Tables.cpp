#include "desk/schema/Tables.h"

namespace schema {

std::span<const TablePlan> tablePlans()
{
    using enum Holds;
    static const std::vector<TablePlan> plans{
        {"tPSProductMaster",
         {{"PM_PK", Key},
          {"PM_Catagory", Text},
          {"PM_Name", Text},
          {"PM_UnitPrice", Money},
          {"PM_IsTaxed", Flag},
          {"PM_IsValid", Flag},
          {"PM_IsHide", Flag},
          {"PM_EtcMemo", Text},
          {"PM_AddedDate", Date}}},
        {"tPSCompanyMaster",
         {{"CM_PK", Key},
          {"CM_Name", Text},
          {"CM_RegNum", Text},
          {"CM_Tel", Text},
          {"CM_Address", Text},
          {"CM_EtcMemo", Text},
          {"CM_IsValid", Flag}}},
        // A bound grid can only write rows that have a key, so purchases and properties get one of their own.
        {"tPSIncoming",
         {{"IN_PK", Key},
          {"PM_PK", Long},
          {"CM_PK", Long},
          {"IN_Date", Date},
          {"IN_Count", Number},
          {"IN_UnitPrice", Money},
          {"IN_HalinTotal", Money},
          {"IN_Total", Money},
          {"IN_EtcMemo", Text}}},
        {"tPSOrderMaster",
         {{"OrdM_PK", Key},
          {"Cust_PK", Long, true},
          {"OrdM_Date", Date, true},
          {"OrdM_Gubun", Integer},
          {"OrdM_Address", Text},
          {"OrdM_Tel", Text},
          {"OrdM_Cel", Text},
          {"OrdM_TakbaeMemo", Text},
          {"OrdM_TaxTotal", Money},
          {"OrdM_TaxFreeTotal", Money},
          {"OrdM_HalinTotal", Money},
          {"OrdM_Total", Money},
          {"OrdM_Misugum", Money},
          {"OrdM_ETCMemo", Text}}},
        {"tPSOrderDetail",
         {{"OrdD_PK", Key},
          {"OrdM_PK", Long, true},
          {"PM_PK", Long, true},
          {"OrdD_UnitPrice", Money},
          {"OrdD_HalinUnit", Money},
          {"OrdD_Count", Integer},
          {"OrdD_OrderType", Integer},
          {"OrdD_RfndMemo", Text}}},
        {"tPSTransaction",
         {{"tpstrans_PK", Key},
          {"tpstrans_Customer_PK", Long},
          {"tpstrans_OrderM_PK", Long},
          {"tpstrans_Date", Date},
          {"tpstrans_Operator", Integer},
          {"tpstrans_Money", Long},
          {"tpstrans_Method", MethodCode},
          {"tpstrans_Memo", Text},
          {"trans_temp", Text},
          {"trans_NotSubmit", Flag}}},
        // A key cut to 20 characters on insert may stand twice, so the name is not unique.
        {"tPSProperties", {{"tpsps_PK", Key}, {"tpsps_Key", Text, true}, {"tpsps_Value", Text}}},
        {"Customer",
         {{"Customer_PK", Key},
          {"name", Text, true},
          {"sn", Text},
          {"ssn1", Text},
          {"ssn2", Text},
          {"Insu_Type", Text},
          {"Insu_Symbol", Text},
          {"Insu_No", Text},
          {"sex", Flag},
          {"birth", Date},
          {"zipcode", Text},
          {"address", Text},
          {"phone", Text},
          {"cell", Text},
          {"vip", Text}}},
        {"Receipt",
         {{"Receipt_PK", Key},
          {"Customer_PK", Long, true},
          {"TxDate", Date},
          {"Bonin_Money", Money},
          {"Cheonggu_Money", Money},
          {"General_Money", Money}}},
        {"t_HospSetup", {{"HS_KEY", SettingName}, {"HS_Value", Text}}},
    };
    return plans;
}

std::span<const IndexPlan> indexPlans()
{
    static const IndexPlan plans[]{
        {"ixOrderMasterCustomer", "tPSOrderMaster", "Cust_PK, OrdM_Date"},
        // With the key, so that a server finds the range of a period's orders without a look at them.
        {"ixOrderMasterDate", "tPSOrderMaster", "OrdM_Date, OrdM_PK"},
        // Few orders have money outstanding, and a list of them must not look at all the others.
        {"ixOrderMasterOutstanding", "tPSOrderMaster", "Cust_PK, OrdM_Date", "OrdM_Misugum <> 0"},
        {"ixOrderDetailOrder", "tPSOrderDetail", "OrdM_PK"},
        // Whole, so that the stock is counted without a look at the lines themselves.
        {"ixOrderDetailProduct", "tPSOrderDetail", "PM_PK, OrdD_OrderType, OrdD_Count"},
        {"ixTransactionOrder", "tPSTransaction", "tpstrans_OrderM_PK"},
        {"ixTransactionCustomer", "tPSTransaction", "tpstrans_Customer_PK, tpstrans_Date"},
        {"ixTransactionDate", "tPSTransaction", "tpstrans_Date"},
        // Whole as well: sums and last prices of purchases are read from it alone.
        {"ixIncomingProduct", "tPSIncoming", "PM_PK, IN_Date, IN_UnitPrice, IN_Count"},
        {"ixReceiptCustomer", "Receipt", "Customer_PK"},
    };
    return plans;
}

namespace {

// The checks make the embedded engine as strict as a server: it would keep any text in a date and any size in a number.
// Only with a modifier does its date function carry February 30 over into March.
QString sqliteColumn(Holds holds)
{
    switch (holds) {
    case Holds::Key:
        return QStringLiteral("INTEGER PRIMARY KEY AUTOINCREMENT");
    case Holds::Long:
        return QStringLiteral("INTEGER%2 CHECK (%1 BETWEEN -2147483648 AND 2147483647)");
    case Holds::Integer:
        return QStringLiteral("INTEGER%2 CHECK (%1 BETWEEN -32768 AND 32767)");
    case Holds::Flag:
        return QStringLiteral("INTEGER%2 CHECK (%1 IN (0, 1))");
    case Holds::Money:
        return QStringLiteral("INTEGER%2");
    case Holds::Number:
        return QStringLiteral("REAL%2");
    case Holds::Date:
        return QStringLiteral("TEXT%2 CHECK (date(%1, '+0 days') IS %1)");
    case Holds::Text:
        return QStringLiteral("TEXT%2");
    case Holds::MethodCode:
        return QStringLiteral("TEXT%2 CHECK (length(%1) <= 2)");
    case Holds::SettingName:
        return QStringLiteral("TEXT NOT NULL PRIMARY KEY");
    }
    Q_UNREACHABLE();
}

QString postgresColumn(Holds holds)
{
    switch (holds) {
    case Holds::Key:
        return QStringLiteral("integer GENERATED BY DEFAULT AS IDENTITY PRIMARY KEY");
    case Holds::Long:
        return QStringLiteral("integer%2");
    case Holds::Integer:
        return QStringLiteral("smallint%2");
    case Holds::Flag: // a boolean would refuse the statements' "= 1"
        return QStringLiteral("smallint%2 CHECK (%1 IN (0, 1))");
    case Holds::Money:
        return QStringLiteral("numeric(19,4)%2");
    case Holds::Number:
        return QStringLiteral("double precision%2");
    case Holds::Date:
        return QStringLiteral("date%2");
    case Holds::Text:
        return QStringLiteral("text%2");
    case Holds::MethodCode:
        return QStringLiteral("varchar(2)%2");
    case Holds::SettingName:
        return QStringLiteral("text PRIMARY KEY");
    }
    Q_UNREACHABLE();
}

} // namespace

QString createTableStatement(const TablePlan &table, Dialect dialect)
{
    QStringList columns;
    for (const ColumnPlan &column : table.columns) {
        const QString name = QString::fromLatin1(column.name);
        QString type = dialect == Dialect::SQLite ? sqliteColumn(column.holds) : postgresColumn(column.holds);
        type.replace(QStringLiteral("%1"), name);
        type.replace(QStringLiteral("%2"), column.required ? QStringLiteral(" NOT NULL") : QString());
        columns << QStringLiteral("    %1 %2").arg(name, type);
    }
    return QStringLiteral("CREATE TABLE %1 (\n%2\n)%3")
        .arg(QString::fromLatin1(table.name), columns.join(QStringLiteral(",\n")),
             dialect == Dialect::SQLite ? QStringLiteral(" STRICT") : QString());
}

QString createIndexStatement(const IndexPlan &index)
{
    const QString rows = QString::fromLatin1(index.rows);
    return QStringLiteral("CREATE INDEX %1 ON %2 (%3)%4")
        .arg(QString::fromLatin1(index.name), QString::fromLatin1(index.table), QString::fromLatin1(index.columns),
             rows.isEmpty() ? QString() : QStringLiteral(" WHERE ") + rows);
}

QStringList postgresLikeStatements()
{
    // LIKE resolves to the operator ~~ along the search path, so one that stands ahead of the built-in one takes over.
    // It reads a pattern as the embedded engine's does (see ado::like), by way of a regular expression.
    return {
        QStringLiteral("CREATE SCHEMA IF NOT EXISTS clinic_like"),
        QStringLiteral(R"sql(
CREATE OR REPLACE FUNCTION clinic_like.literal(sign text) RETURNS text LANGUAGE sql IMMUTABLE STRICT AS
$body$ SELECT regexp_replace(sign, '([^[:alnum:][:space:]])', '\\\1') $body$)sql"),
        QStringLiteral(R"sql(
CREATE OR REPLACE FUNCTION clinic_like.class_to_regex(members text) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT AS $body$
DECLARE
    negated boolean := substr(members, 1, 1) = '^';
    at int := CASE WHEN negated THEN 2 ELSE 1 END;
    first text;
    last text;
    regex text := '';
BEGIN
    WHILE at <= length(members) LOOP
        first := substr(members, at, 1);
        last := first;
        IF substr(members, at + 1, 1) = '-' AND at + 2 <= length(members) THEN
            last := substr(members, at + 2, 1);
            at := at + 2;
        END IF;
        IF ascii(first) <= ascii(last) THEN
            regex := regex || clinic_like.literal(first) || '-' || clinic_like.literal(last);
        END IF;
        at := at + 1;
    END LOOP;
    IF regex = '' THEN
        RETURN CASE WHEN negated THEN '.' ELSE '(?!)' END;
    END IF;
    RETURN CASE WHEN negated THEN '[^' ELSE '[' END || regex || ']';
END
$body$)sql"),
        QStringLiteral(R"sql(
CREATE OR REPLACE FUNCTION clinic_like.pattern_to_regex(pattern text) RETURNS text
LANGUAGE plpgsql IMMUTABLE STRICT AS $body$
DECLARE
    regex text := '';
    at int := 1;
    sign text;
    closing int;
BEGIN
    WHILE at <= length(pattern) LOOP
        sign := substr(pattern, at, 1);
        IF sign = '[' THEN
            closing := strpos(substr(pattern, at + 1), ']');
            IF closing = 0 THEN
                RETURN '(?!)';
            END IF;
            regex := regex || clinic_like.class_to_regex(substr(pattern, at + 1, closing - 1));
            at := at + closing;
        ELSE
            regex := regex || CASE sign WHEN '%' THEN '.*' WHEN '_' THEN '.' ELSE clinic_like.literal(sign) END;
        END IF;
        at := at + 1;
    END LOOP;
    RETURN '^' || regex || '$';
END
$body$)sql"),
        QStringLiteral("CREATE OR REPLACE FUNCTION clinic_like.matches(value text, pattern text) RETURNS boolean "
                       "LANGUAGE sql IMMUTABLE STRICT AS "
                       "$body$ SELECT value OPERATOR(pg_catalog.~*) clinic_like.pattern_to_regex(pattern) $body$"),
        QStringLiteral("CREATE OR REPLACE FUNCTION clinic_like.differs(value text, pattern text) RETURNS boolean "
                       "LANGUAGE sql IMMUTABLE STRICT AS "
                       "$body$ SELECT value OPERATOR(pg_catalog.!~*) clinic_like.pattern_to_regex(pattern) $body$"),
        QStringLiteral("DROP OPERATOR IF EXISTS clinic_like.~~ (text, text)"),
        QStringLiteral("DROP OPERATOR IF EXISTS clinic_like.!~~ (text, text)"),
        QStringLiteral(
            "CREATE OPERATOR clinic_like.~~ (LEFTARG = text, RIGHTARG = text, FUNCTION = clinic_like.matches)"),
        QStringLiteral(
            "CREATE OPERATOR clinic_like.!~~ (LEFTARG = text, RIGHTARG = text, FUNCTION = clinic_like.differs)"),
        // New tables still go to the first schema of the path.
        QStringLiteral("SET search_path TO public, clinic_like, pg_catalog"),
        QStringLiteral("DO $body$ BEGIN EXECUTE format('ALTER DATABASE %I SET search_path TO public, clinic_like, "
                       "pg_catalog', current_database()); END $body$"),
    };
}

QStringList postgresPlannerStatements()
{
    // A clinic's rows lie in memory, and its statements are short: left to itself the planner reads a whole table for the
    // lines of two weeks, and compiling or sharing out such a statement takes longer than running it.
    QStringList statements;
    for (const char *setting : {"random_page_cost TO 1.1", "jit TO off", "max_parallel_workers_per_gather TO 0"})
        statements << QStringLiteral(
                          "DO $body$ BEGIN EXECUTE format('ALTER DATABASE %I SET %1', current_database()); END $body$")
                          .replace(QStringLiteral("%1"), QLatin1String(setting));
    return statements;
}

} // namespace schema
