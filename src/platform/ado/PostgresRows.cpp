#include "platform/ado/PostgresRows.h"

#include "platform/ado/Driver.h"

#include <libpq-fe.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace ado {

namespace {

// Type numbers of the server's catalogue, which never change.
constexpr Oid numericTypes[]{16 /* bool */,    20 /* int8 */,    21 /* int2 */, 23 /* int4 */,
                             700 /* float4 */, 701 /* float8 */, 1700 /* numeric */};

bool isNumeric(Oid type)
{
    return std::ranges::find(numericTypes, type) != std::end(numericTypes);
}

CellTable::Cell cellOf(const PGresult *rows, int row, int column)
{
    const int length = PQgetlength(rows, row, column);
    if (length == 0 && PQgetisnull(rows, row, column))
        return {{.integer = 0}, 0, CellTable::Kind::Null};
    return {{.text = PQgetvalue(rows, row, column)}, static_cast<std::uint32_t>(length), CellTable::Kind::Text};
}

/// A text of the server has no zero within.
bool isSameCell(const PGresult *one, const PGresult *other, int row, int column)
{
    const char *const text = PQgetvalue(one, row, column);
    if (std::strcmp(text, PQgetvalue(other, row, column)) != 0)
        return false;
    return *text || PQgetisnull(one, row, column) == PQgetisnull(other, row, column);
}

class PostgresRows : public HeldRows
{
public:
    explicit PostgresRows(PostgresResult result)
        : result_(std::move(result))
    {
    }

    int count() const override { return PQntuples(result_.get()); }
    CellTable::Cell cell(int row, int column) const override { return cellOf(result_.get(), row, column); }
    bool isSame(const HeldRows &other) const override
    {
        const auto *const same = dynamic_cast<const PostgresRows *>(&other);
        const int columns = PQnfields(result_.get());
        for (int row = 0; same && row < count(); ++row) {
            for (int column = 0; column < columns; ++column) {
                if (!isSameCell(result_.get(), same->result_.get(), row, column))
                    return false;
            }
        }
        return same;
    }

private:
    PostgresResult result_;
};

void copyRows(const PGresult *rows, CellTable &table)
{
    for (int row = 0; row < PQntuples(rows); ++row) {
        for (int column = 0; column < PQnfields(rows); ++column) {
            const CellTable::Cell cell = cellOf(rows, row, column);
            if (cell.kind == CellTable::Kind::Null)
                table.addNull();
            else
                table.addText(cell.text, cell.length);
        }
    }
}

} // namespace

PostgresResult ownedResult(pg_result *result)
{
    return {result, &PQclear};
}

CellTable rowsOf(const PostgresResult &result, const QString &statement)
{
    constexpr int many = 4096; // cells
    const PGresult *const rows = result.get();
    std::vector<ResultColumn> described;
    for (int column = 0; column < PQnfields(rows); ++column)
        described.push_back(
            describeColumn(QString::fromUtf8(PQfname(rows, column)), isNumeric(PQftype(rows, column)), statement));
    if (PQntuples(rows) > many / std::max(PQnfields(rows), 1))
        return {std::move(described), std::make_shared<PostgresRows>(result)};
    CellTable table(std::move(described));
    copyRows(rows, table);
    return table;
}

} // namespace ado
