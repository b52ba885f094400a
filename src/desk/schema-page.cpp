#include "clinic/ColumnFit.h"
#include "desk/schema/Tables.h"

#include <QTextStream>

// schema-page: prints docs/schema.md, for developers whose program makes the tables itself. docs/make-schema keeps it.

namespace {

using schema::Dialect;

constexpr const char *head = R"page(# The tables

What a sale reads and writes, for a developer whose program makes the tables itself. This page is made by `docs/make-schema`
from the list that the programs go by, and a test compares the two. `desk --make empty` makes all of it; `desk --upgrade` adds
what is missing to a database that has `Customer` and `Receipt` ([upkeep.md](upkeep.md#upgrade)); `desk --check` and the sale
itself, at its first entry with a connection, name what does not fit.

- **Names** are written without quotes. On PostgreSQL they are therefore in small letters, whatever this page shows; a table or
  column that was made in quotes with capitals is not found. The tables are found along the search path, in any schema.
- **Optional** columns are the desk program's own: nothing else asks for them.
- **Keys** that are "counted" get their number from the database; nobody writes them. `tPSIncoming` and `tPSProperties` need no
  key. Where they have one, a primary key or another unique column that is never NULL, rows are changed by it; where they
  have none, under the condition of all their columns, and a row that has a twin is refused.
- **On MariaDB** the tables are of `ENGINE=InnoDB`, texts `COLLATE utf8mb4_nopad_bin`; a table without a key is read, its rows are not
  changed one by one ([odbc.md](odbc.md)).
- **More columns** do no harm where a row that leaves them out gets a value or NULL. Columns that some insertion leaves out must
  take NULL: `PM_IsHide`, `OrdD_OrderType`, `OrdD_RfndMemo`, `trans_temp`, `trans_NotSubmit`.
- **Views** do for `Customer` and `Receipt`. In the place of another table a view does on PostgreSQL alone, one that the server
  itself can write through.
- **Foreign keys** are not needed. With some of your own, an order's lines and ledger rows are deleted before the order.
)page";

struct Holding
{
    ado::ColumnType type;
    const char *name;
    const char *meaning;
};

constexpr Holding holdings[]{
    {ado::ColumnType::Key, "key", "a whole number of 32 bits that is the row's own"},
    {ado::ColumnType::Long, "number", "a whole number of 32 bits: another row's key, an amount of the ledger"},
    {ado::ColumnType::Integer, "small number", "a whole number of 16 bits"},
    {ado::ColumnType::Flag, "flag", "0 or 1"},
    {ado::ColumnType::Money, "money", "won, at most 9 digits before the point for one value"},
    {ado::ColumnType::Number, "quantity", "a number that may have a fraction"},
    {ado::ColumnType::Date, "date", "written as `2026-11-25`, without a time"},
    {ado::ColumnType::Text, "text", "any length, where none is told"},
};

const char *const fileTypes[]{"INTEGER", "NUMERIC", "REAL", "TEXT", "BLOB"};
const char *const serverTypes[]{"smallint",     "integer",
                                "bigint",       "numeric(19,4)",
                                "numeric(9,2)", "double precision",
                                "real",         "money",
                                "boolean",      "text",
                                "varchar",      "character varying(9)",
                                "date",         "timestamp without time zone"};

const Holding &holdingOf(const clinic::Column &column)
{
    for (const Holding &one : holdings) {
        if (one.type == column.holds)
            return one;
    }
    Q_UNREACHABLE();
}

/// Of the types those that fit, that fit with less, or that do not.
enum class Fit { Well, WithLess, Not };
QString typesOf(ado::ColumnType holds, bool file, Fit fit)
{
    const clinic::Column column{"", holds};
    QStringList types;
    for (const char *type :
         file ? std::span<const char *const>(fileTypes) : std::span<const char *const>(serverTypes)) {
        const QString name = QString::fromLatin1(type);
        const QString asTold = name == u"varchar" ? QStringLiteral("character varying") : name;
        const clinic::Misfit misfit = clinic::misfitOf(column, asTold, file);
        const Fit found = !misfit.why ? Fit::Well : misfit.loses ? Fit::Not : Fit::WithLess;
        if (found == fit)
            types << QStringLiteral("`%1`").arg(name);
    }
    return types.isEmpty() ? QStringLiteral("-") : types.join(QStringLiteral(", "));
}

void tellTypes(QTextStream &page)
{
    page << "\n## Types\n\n| kind | what it holds |\n|---|---|\n";
    for (const Holding &one : holdings)
        page << "| " << one.name << " | " << one.meaning << " |\n";
    page
        << "\nOn PostgreSQL, and by ODBC to it:\n\n| kind | fits | works with less | is refused |\n|---|---|---|---|\n";
    for (const Holding &one : holdings)
        page << "| " << one.name << " | " << typesOf(one.type, false, Fit::Well) << " | "
             << typesOf(one.type, false, Fit::WithLess) << " | " << typesOf(one.type, false, Fit::Not) << " |\n";
    page << "\nOn SQLite, by what its engine makes of the declared type (`VARCHAR` is `TEXT` to it, `BOOLEAN` and "
            "`DATE` are "
            "`NUMERIC`). A counted key is `INTEGER PRIMARY KEY` there and nothing else.\n\n"
            "| kind | fits | works with less | is refused |\n|---|---|---|---|\n";
    for (const Holding &one : holdings)
        page << "| " << one.name << " | " << typesOf(one.type, true, Fit::Well) << " | "
             << typesOf(one.type, true, Fit::WithLess) << " | " << typesOf(one.type, true, Fit::Not) << " |\n";
}

void tellTable(QTextStream &page, const clinic::Table &table)
{
    page << "\n## " << table.name << "\n\n| column | kind | |\n|---|---|---|\n";
    for (const clinic::Column &column : table.columns) {
        QStringList remarks;
        if (&column == &table.key() && !column.own)
            remarks << (column.holds == ado::ColumnType::Key ? QStringLiteral("key, counted") : QStringLiteral("key"));
        if (column.own)
            remarks << QStringLiteral("optional");
        if (column.required)
            remarks << QStringLiteral("never NULL");
        if (column.longest > 0)
            remarks << QStringLiteral("%1 signs").arg(column.longest);
        page << "| `" << column.name << "` | " << holdingOf(column).name << " | " << remarks.join(QStringLiteral(", "))
             << " |\n";
    }
    const std::pair<Dialect, const char *> engines[]{
        {Dialect::SQLite, "SQLite"}, {Dialect::PostgreSQL, "PostgreSQL"}, {Dialect::MariaDB, "MariaDB"}};
    for (const auto &[dialect, name] : engines) {
        page << "\n" << name << ":\n\n```sql\n" << schema::createTableStatement(table, dialect) << ";\n```\n";
    }
}

void tellIndexes(QTextStream &page)
{
    page << "\n## Indexes\n\nThe same on SQLite and PostgreSQL; on MariaDB they stand in the tables above. Without "
            "them everything works, slower with each year; any index "
            "that begins "
            "with the same column will do.\n\n```sql\n";
    for (const clinic::Index &index : clinic::indexes())
        page << schema::createIndexStatement(index, Dialect::SQLite) << ";\n";
    page << "```\n\n## Counters\n\nOn PostgreSQL an identity, a `serial` or any other default will do, or a trigger "
            "before the "
            "insertion. Whoever writes keys himself moves the counter on, or the next sale meets a key that is "
            "taken:\n\n```sql\n"
            "SELECT setval(pg_get_serial_sequence('tpsordermaster', 'ordm_pk'), (SELECT MAX(OrdM_PK) FROM "
            "tPSOrderMaster));\n"
            "```\n\n`desk --upgrade` does so for the tables of the sale, `desk --check` names them.\n";
}

} // namespace

int main()
{
    QTextStream page(stdout);
    page << head;
    tellTypes(page);
    for (const clinic::Table &table : clinic::tables())
        tellTable(page, table);
    tellIndexes(page);
    return 0;
}
