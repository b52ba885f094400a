#include "tests/faults/PlainFile.h"

#include <QList>

#include <sqlite3.h>

namespace {

QByteArray rowsOf(sqlite3 *handle, const QByteArray &statement)
{
    QByteArray rows;
    sqlite3_stmt *row = nullptr;
    sqlite3_prepare_v2(handle, statement, -1, &row, nullptr);
    int step = SQLITE_ERROR;
    while (row && (step = sqlite3_step(row)) == SQLITE_ROW) {
        for (int column = 0; column < sqlite3_column_count(row); ++column)
            rows.append(column ? "|" : "").append(reinterpret_cast<const char *>(sqlite3_column_text(row, column)));
        rows += '\n';
    }
    if (step != SQLITE_DONE)
        rows = QByteArray("DAMAGED ") + sqlite3_errmsg(handle) + ": " + statement + '\n';
    sqlite3_finalize(row);
    return rows;
}

} // namespace

QByteArray standOf(const QString &file)
{
    sqlite3 *handle = nullptr;
    QByteArray stand;
    if (sqlite3_open_v2(file.toUtf8(), &handle, SQLITE_OPEN_READWRITE, "unix") == SQLITE_OK) {
        const QByteArray whole = rowsOf(handle, "PRAGMA integrity_check");
        if (whole != "ok\n") {
            sqlite3_close(handle);
            return "DAMAGED " + whole;
        }
        const QList<QByteArray> tables =
            rowsOf(handle, "SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY name").split('\n');
        for (const QByteArray &table : tables) {
            // Of the journal all but when it was, and what follows from that.
            const QByteArray columns = table == "t_DeskJournal"
                                           ? "DJ_PK, DJ_Action, DJ_Table, DJ_Row, DJ_Order, DJ_Customer, DJ_Old, DJ_New"
                                           : "*";
            if (!table.isEmpty())
                stand += table + ":\n" + rowsOf(handle, "SELECT " + columns + " FROM " + table + " ORDER BY 1");
        }
        stand += rowsOf(handle, "SELECT sql FROM sqlite_master ORDER BY sql");
    } else {
        stand = QByteArray("DAMAGED ") + sqlite3_errmsg(handle);
    }
    sqlite3_close(handle);
    return stand;
}
