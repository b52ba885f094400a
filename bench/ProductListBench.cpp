#include "bench/ProductListBench.h"

#include "bench/BareStatement.h"
#include "bench/StockModel.h"
#include "data/clsSQL.h"
#include "platform/ado/Recordset.h"
#include "platform/runtime/Conversions.h"

#include <stdexcept>
#include <unordered_map>

namespace bench {

namespace {

/// Every column of every row, in one text of the reader's own.
struct ProductTexts
{
    std::string text;
    std::vector<std::size_t> ends; ///< of the cells in it
    int columns = 0;

    std::string_view cell(std::size_t number) const
    {
        const std::size_t begin = number == 0 ? 0 : ends[number - 1];
        return std::string_view(text).substr(begin, ends[number] - begin);
    }
};

ProductTexts readBare(sqlite3 *handle, const std::string &statement)
{
    BareStatement rows(handle, statement);
    ProductTexts read;
    read.columns = rows.columns();
    while (rows.step()) {
        for (int column = 0; column < read.columns; ++column) {
            read.text += rows.text(column);
            read.ends.push_back(read.text.size());
        }
    }
    return read;
}

void openRecordset(ado::Recordset &products, const ado::ConnectionPtr &connection)
{
    products.Open(clsSQL().getProductMasterSQL(false), connection, ado::CursorType::Static, ado::LockType::ReadOnly);
}

/// What the database holds for a value of the recordset.
std::string stored(const QVariant &value)
{
    if (value.typeId() == QMetaType::Bool)
        return value.toBool() ? "1" : "0";
    return runtime::text(value).toStdString();
}

/// Both readings hold the same cells; rows of equal names may stand in another order.
void checkSame(const ado::ConnectionPtr &connection, const std::string &statement, int expectedRows)
{
    ado::Recordset products;
    openRecordset(products, connection);
    const ProductTexts bare = readBare(bareHandle(*connection), statement);
    const std::size_t width = std::size_t(bare.columns);
    std::unordered_map<std::string_view, std::size_t> rowOfKey;
    for (std::size_t first = 0; first < bare.ends.size(); first += width)
        rowOfKey[bare.cell(first)] = first;
    bool same = products.rowCount() >= expectedRows && rowOfKey.size() == std::size_t(products.rowCount())
                && products.fieldNames().size() == bare.columns;
    for (int row = 0; same && row < products.rowCount(); ++row) {
        const std::string key = stored(products.valueAt(row, 0));
        for (int column = 0; same && column < bare.columns; ++column)
            same = stored(products.valueAt(row, column)) == bare.cell(rowOfKey.at(key) + std::size_t(column));
    }
    if (!same)
        throw std::runtime_error("product list: recordset and bare API do not read the same");
}

void registerSize(const ado::ConnectionPtr &connection, const std::string &size, int expectedRows, Table &table)
{
    const std::string statement = clsSQL().getProductMasterSQL(false).toStdString();
    checkSame(connection, statement, expectedRows);
    const std::string name = "products/" + size;
    benchmark::RegisterBenchmark((name + "/recordset").c_str(), [connection](benchmark::State &state) {
        for (auto _ : state) {
            ado::Recordset products;
            openRecordset(products, connection);
            // A list is put in order as far as it is looked at.
            benchmark::DoNotOptimize(products.bookmarkAt(products.rowCount() - 1));
        }
    });
    benchmark::RegisterBenchmark((name + "/bare").c_str(), [connection, statement](benchmark::State &state) {
        for (auto _ : state)
            benchmark::DoNotOptimize(readBare(bareHandle(*connection), statement).text.size());
    });
    benchmark::RegisterBenchmark((name + "/stock").c_str(), [connection, statement](benchmark::State &state) {
        for (auto _ : state)
            benchmark::DoNotOptimize(stockRows(*connection, QString::fromStdString(statement)));
    });
    table.add(
        {"load the product list, " + size + " products", name + "/recordset", name + "/bare", 1.2, name + "/stock"});
}

} // namespace

void registerProductList(const Clinics &clinics, Table &table)
{
    // Some are hidden and stay out of the list.
    registerSize(clinics.fewProducts, "1,000", 850, table);
    registerSize(clinics.large, "20,000", 18'000, table);
    registerSize(clinics.manyProducts, "100,000", 90'000, table);
}

} // namespace bench
