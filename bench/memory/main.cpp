#include "clinic/Tables.h"
#include "desk/schema/Schema.h"
#include "platform/ado/Recordset.h"
#include "platform/runtime/RuntimeError.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>
#include <malloc.h>

namespace {

constexpr int rowCount = 20'000;
constexpr int repetitions = 7;

ado::ConnectionPtr clinicOfProducts()
{
    ado::ConnectionPtr clinic = ado::Connection::open(QStringLiteral("sqlite::memory:"), true);
    schema::createSchema(*clinic);
    clinic->Execute(
        QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
                       "INSERT INTO tPSProductMaster (PM_Catagory, PM_Name, PM_UnitPrice, PM_IsTaxed, PM_IsValid, "
                       "PM_IsHide, PM_EtcMemo, PM_AddedDate) "
                       "SELECT '한약', '쌍화탕 ' || i, 1000 * i, 1, 1, 0, '식후 30분', '2026-11-25' FROM n")
            .arg(rowCount));
    return clinic;
}

/// What one row takes once the list has been opened and looked at.
struct Cost
{
    double bytes = 0;
    double microseconds = 0;
};

template <typename Look>
Cost costOf(const ado::ConnectionPtr &clinic, ado::CursorType cursor, Look look)
{
    const std::size_t before = mallinfo2().uordblks;
    ado::Recordset products;
    QElapsedTimer time;
    time.start();
    products.Open(QStringLiteral("SELECT * FROM tPSProductMaster ORDER BY PM_Catagory, PM_Name"), clinic, cursor,
                  ado::LockType::ReadOnly);
    look(products);
    const double nanoseconds = static_cast<double>(time.nsecsElapsed());
    return {static_cast<double>(mallinfo2().uordblks - before) / rowCount, nanoseconds / 1000 / rowCount};
}

template <typename Look>
void print(const char *what, const ado::ConnectionPtr &clinic, ado::CursorType cursor, Look look)
{
    std::vector<Cost> costs;
    for (int time = 0; time < repetitions; ++time)
        costs.push_back(costOf(clinic, cursor, look));
    std::ranges::nth_element(costs, costs.begin() + repetitions / 2, {}, &Cost::microseconds);
    const Cost &median = costs[repetitions / 2];
    std::printf("| %s | %.0f | %.2f |\n", what, median.bytes, median.microseconds);
}

void openOnly(ado::Recordset &) {}

void lookAtAll(ado::Recordset &products)
{
    for (int row = 0; row < products.rowCount(); ++row)
        products.valueAt(row, 1);
}

void standOnEach(ado::Recordset &products)
{
    for (int row = 0; row < products.rowCount(); ++row)
        products.moveTo(row);
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    clinic::registerTables();
    try {
        const ado::ConnectionPtr clinic = clinicOfProducts();
        std::printf("| %d products | bytes a row | us a row |\n|---|---:|---:|\n", rowCount);
        print("static list, opened", clinic, ado::CursorType::Static, openOnly);
        print("keyset, opened: keys and order alone", clinic, ado::CursorType::Keyset, openOnly);
        print("keyset, scrolled through", clinic, ado::CursorType::Keyset, lookAtAll);
        print("keyset, every row made current", clinic, ado::CursorType::Keyset, standOnEach);
    } catch (const runtime::RuntimeError &error) {
        std::fprintf(stderr, "row_memory: %s\n", qUtf8Printable(error.description()));
        return 1;
    }
    return 0;
}
