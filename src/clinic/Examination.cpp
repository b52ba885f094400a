#include "clinic/Examination.h"

#include "clinic/ColumnFit.h"
#include "clinic/Indexes.h"
#include "clinic/Tables.h"

#include <algorithm>

namespace clinic {

namespace {

using Weight = Finding::Weight;
using Kind = Finding::Kind;

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

bool isOneOf(const char *name, std::initializer_list<const char *> names)
{
    return std::ranges::any_of(names, [&](const char *one) { return qstrcmp(one, name) == 0; });
}

/// Columns that some insertion leaves out.
bool isLeftOut(const Column &column)
{
    return isOneOf(column.name, {"PM_IsHide", "OrdD_OrderType", "OrdD_RfndMemo", "trans_temp", "trans_NotSubmit"});
}

/// The host's, which are only read.
bool isRead(const Table &table)
{
    return isOneOf(table.name, {"Customer", "Receipt"});
}

/// One table against what the catalogue has of it.
class Comparison
{
public:
    Comparison(const Table &table, const FoundTable &found, ado::Engine engine, std::vector<Finding> &findings)
        : table_(table)
        , found_(found)
        , embedded_(engine == ado::Engine::SQLite)
        , mariaDb_(engine == ado::Engine::MariaDB)
        , findings_(findings)
    {
    }

    void run()
    {
        if (found_.isView && !isRead(table_))
            compareView();
        for (const Column &column : table_.columns)
            compare(column);
        if (isRead(table_) || found_.isView)
            return;
        for (const FoundColumn &column : found_.columns) {
            if (column.required && !column.filled && !isOurs(column))
                add(Weight::Fault, QStringLiteral("비워 둘 수 없는 다른 프로그램의 항목입니다"), column.name);
        }
    }

private:
    bool isOurs(const FoundColumn &column) const
    {
        return std::ranges::any_of(table_.columns, [&](const Column &ours) {
            return column.name.compare(latin(ours.name), Qt::CaseInsensitive) == 0 && !ours.own;
        });
    }
    bool isKey(const Column &column) const { return &column == &table_.key(); }

    void add(Weight weight, const QString &what, const QString &column = {}, const QString &type = {},
             Kind kind = Kind::Other)
    {
        findings_.push_back({weight, kind,
                             what + QStringLiteral(": ") + latin(table_.name)
                                 + (column.isEmpty() ? QString() : u'.' + column)
                                 + (type.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(type))});
    }

    /// A file's engine does not tell how many rows a view took, and every change would look like another desk's.
    void compareView()
    {
        const bool bySettings = isOneOf(table_.name, {"t_HospSetup"});
        if (!found_.takesWrites || (embedded_ && !bySettings))
            add(Weight::Fault, QStringLiteral("저장할 수 없는 뷰입니다"));
        else if (found_.intercepted)
            add(Weight::Hint, QStringLiteral("트리거가 저장을 대신하는 뷰입니다. 저장되는지 확인하십시오"));
    }

    void compare(const Column &column)
    {
        const QString name = latin(column.name);
        const FoundColumn *const found = found_.column(name);
        if (column.own)
            return;
        if (!found)
            return add(Weight::Fault, QStringLiteral("항목이 없습니다"), name, {}, Kind::NoColumn);
        if (!embedded_ && !mariaDb_ && found->name != found->name.toLower())
            return add(Weight::Fault,
                       QStringLiteral("따옴표로 만들어 찾을 수 없는 항목입니다. 소문자 이름으로 바꾸십시오"),
                       found->name);
        if (mariaDb_ && !isRead(table_))
            compareKeeping(column, *found);
        const Misfit misfit = misfitOf(column, found->type, embedded_);
        const bool loses = misfit.loses && !(isRead(table_) && column.holds == ado::ColumnType::Text);
        if (misfit.why)
            add(loses ? Weight::Fault : Weight::Hint, QString::fromUtf8(misfit.why), name, found->type);
        if (isRead(table_) || found_.isView || found->filled)
            return;
        if (isKey(column) && column.holds == ado::ColumnType::Key)
            add(Weight::Fault, QStringLiteral("새 번호가 매겨지지 않는 키입니다"), name, found->type);
        else if (found->required && isLeftOut(column))
            add(Weight::Fault, QStringLiteral("비워 둘 수 있어야 하는 항목입니다"), name);
    }

    /// Two desks' texts that differ must not be equal to the server, and half a sale must not stay.
    void compareKeeping(const Column &column, const FoundColumn &found)
    {
        if (column.holds == ado::ColumnType::Text && !found.type.contains(QLatin1String("_nopad_bin")))
            add(Weight::Fault,
                QStringLiteral(
                    "대소문자나 끝의 빈칸을 구별하지 않는 항목입니다. COLLATE utf8mb4_nopad_bin으로 바꾸십시오"),
                found.name, found.type);
        if (isKey(column) && found.type.contains(QLatin1String(" engine ")))
            add(Weight::Fault, QStringLiteral("트랜잭션이 없는 테이블입니다. ENGINE=InnoDB로 바꾸십시오"));
    }

    const Table &table_;
    const FoundTable &found_;
    const bool embedded_;
    const bool mariaDb_;
    std::vector<Finding> &findings_;
};

bool isCounted(const Table &table)
{
    return table.key().holds == ado::ColumnType::Key && !isRead(table);
}

QString keyText(const Table &table, const QString &found)
{
    return QStringLiteral("('%1', '%2', pg_catalog.pg_get_serial_sequence('%3', '%4')::regclass)")
        .arg(latin(table.name), latin(table.key().name), latin(table.name).toLower(), found);
}

/// By the counter itself: the catalogue does not tell the next number of one that was set and has given none yet. Which counters
/// there are, and may be seen, only the server knows, so the look at each is made a statement there.
QString lateStatement(const QStringList &keys)
{
    return QStringLiteral(
               "SELECT k.named || '.' || k.key FROM (VALUES %1) AS k (named, key, counter) JOIN "
               "pg_catalog.pg_sequence s ON s.seqrelid = k.counter WHERE CASE WHEN "
               "pg_catalog.has_sequence_privilege(k.counter, 'SELECT') THEN "
               "strpos(pg_catalog.query_to_xml(format('SELECT 1 FROM %s c WHERE (SELECT MAX(%s) FROM %s) >= CASE WHEN "
               "c.is_called THEN c.last_value + %s ELSE c.last_value END', k.counter, k.key, k.named, s.seqincrement), "
               "false, true, '')::text, '<row') > 0 END ORDER BY 1")
        .arg(keys.join(QStringLiteral(", ")));
}

/// Counters whose next number is taken already; a role that may not see a counter is told nothing. The embedded engine
/// counts on from the highest by itself.
void examineCounters(ado::Connection &connection, const Catalogue &catalogue, std::vector<Finding> &findings)
{
    QStringList keys;
    for (const Table &table : tables()) {
        const FoundTable *const found = catalogue.table(latin(table.name));
        const FoundColumn *const key = found ? found->column(latin(table.key().name)) : nullptr;
        if (isCounted(table) && key && !found->isView && key->filled)
            keys << keyText(table, key->name);
    }
    if (keys.isEmpty())
        return;
    const ado::CellTable late = connection.read(lateStatement(keys));
    for (int row = 0; row < late.rowCount(); ++row)
        findings.push_back({Weight::Fault, Kind::LateCounter,
                            QStringLiteral("다음 번호가 이미 쓰인 번호입니다. desk --upgrade를 실행하십시오: ")
                                + late.raw(row, 0).toString()});
}

/// By the first column of an index: whatever its name and rest, it is what the statements go in by.
void examineIndexes(ado::Connection &connection, const Catalogue &catalogue, std::vector<Finding> &findings)
{
    const QString statement =
        connection.engine() == ado::Engine::MariaDB
            ? QStringLiteral("SELECT LOWER(CONCAT(table_name, '.', column_name)) FROM information_schema.statistics "
                             "WHERE table_schema = DATABASE() AND seq_in_index = 1")
        : connection.engine() == ado::Engine::SQLite
            ? QStringLiteral(
                "SELECT lower(m.name || '.' || i.name) FROM sqlite_master m JOIN pragma_index_list(m.name) l "
                "JOIN pragma_index_info(l.name) i WHERE m.type = 'table' AND i.seqno = 0 AND i.name IS NOT "
                "NULL UNION SELECT lower(m.name || '.' || c.name) FROM sqlite_master m JOIN "
                "pragma_table_info(m.name) c WHERE m.type = 'table' AND c.pk = 1")
            : QStringLiteral(
                "SELECT c.relname || '.' || a.attname FROM pg_catalog.pg_index i JOIN pg_catalog.pg_class c ON "
                "c.oid = i.indrelid JOIN pg_catalog.pg_attribute a ON a.attrelid = c.oid AND a.attnum = "
                "i.indkey[0] WHERE i.indisvalid AND pg_catalog.pg_table_is_visible(c.oid)");
    const ado::CellTable rows = connection.read(statement);
    QStringList there;
    for (int row = 0; row < rows.rowCount(); ++row)
        there << rows.raw(row, 0).toString();
    for (const Index &index : indexes()) {
        const QString table = latin(index.table), columns = latin(index.columns);
        const FoundTable *const found = catalogue.table(table);
        if (found && !found->isView && !there.contains((table + u'.' + columns.section(u',', 0, 0)).toLower()))
            findings.push_back({Weight::Hint, Kind::NoIndex,
                                QStringLiteral("인덱스가 없어 느릴 수 있습니다. desk --upgrade를 실행하십시오: %1 (%2)")
                                    .arg(table, columns)});
    }
}

void examineServer(ado::Connection &connection, std::vector<Finding> &findings)
{
    const ado::CellTable settings = connection.read(QStringLiteral(
        "SELECT (SELECT COUNT(*) FROM unnest(current_schemas(true)) s (name) JOIN pg_catalog.pg_namespace n ON "
        "n.nspname = "
        "s.name JOIN pg_catalog.pg_operator o ON o.oprnamespace = n.oid WHERE n.nspname = 'clinic_like' AND o.oprname "
        "= "
        "'~~' AND array_position(current_schemas(true), 'clinic_like') < array_position(current_schemas(true), "
        "'pg_catalog')), current_setting('server_encoding')"));
    if (settings.raw(0, 0).toInt() == 0)
        findings.push_back(
            {Weight::Hint, Kind::NoLike,
             QStringLiteral("[ ]를 쓰는 LIKE 검색이 되지 않습니다. desk --upgrade를 실행하십시오: clinic_like")});
    if (settings.raw(0, 1).toString() != QLatin1String("UTF8"))
        findings.push_back({Weight::Hint, Kind::Other,
                            QStringLiteral("일부 글자를 저장할 수 없는 데이터베이스의 문자 집합입니다: ")
                                + settings.raw(0, 1).toString()});
}

} // namespace

void foreseeExamination(ado::Foresight &next, const ado::Connection &connection)
{
    if (!next.isOfUse() || connection.engine() != ado::Engine::PostgreSQL)
        return;
    QStringList keys;
    for (const Table &table : tables()) {
        if (isCounted(table))
            keys << keyText(table, latin(table.key().name).toLower());
    }
    next.read(lateStatement(keys));
}

std::vector<Finding> examine(ado::Connection &connection, Depth depth)
{
    ado::Foresight next(connection.shared_from_this());
    return examine(connection, depth, next);
}

std::vector<Finding> examine(ado::Connection &connection, Depth depth, ado::Foresight &next)
{
    foreseeExamination(next, connection); // no literal may come behind its last statement
    QStringList names;
    for (const Table &table : tables())
        names << latin(table.name);
    return examine(connection, depth, readCatalogue(connection, names));
}

std::vector<Finding> examine(ado::Connection &connection, Depth depth, const Catalogue &catalogue)
{
    const bool postgres = connection.engine() == ado::Engine::PostgreSQL || connection.engine() == ado::Engine::Odbc;
    std::vector<Finding> findings;
    for (const Table &table : tables()) {
        const FoundTable *const found = catalogue.table(latin(table.name));
        const bool quoted = catalogue.outOfReach.contains(latin(table.name), Qt::CaseInsensitive);
        if (found)
            Comparison(table, *found, connection.engine(), findings).run();
        else
            findings.push_back(
                {Weight::Fault, quoted ? Kind::Other : Kind::NoTable,
                 (quoted ? QStringLiteral("따옴표로 만들어 찾을 수 없는 테이블입니다. 소문자 이름으로 바꾸십시오: ")
                         : QStringLiteral("테이블이 없습니다: "))
                     + latin(table.name)});
    }
    if (depth == Depth::ToSell && !catalogue.takesWrites)
        findings.push_back({Weight::Fault, Kind::Other, QStringLiteral("읽기 전용으로 열린 데이터베이스입니다")});
    if (postgres)
        examineCounters(connection, catalogue, findings);
    if (depth == Depth::Whole)
        examineIndexes(connection, catalogue, findings);
    if (depth == Depth::Whole && postgres)
        examineServer(connection, findings);
    return findings;
}

QStringList textsOf(const std::vector<Finding> &findings, Finding::Weight weight)
{
    QStringList texts;
    for (const Finding &finding : findings) {
        if (finding.weight == weight)
            texts << finding.what;
    }
    return texts;
}

} // namespace clinic
