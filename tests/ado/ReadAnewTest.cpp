#include "platform/ado/Transaction.h"
#include "tests/ado/Desks.h"
#include "tests/support/Cases.h"

#include <sqlite3.h>

#include <chrono>
#include <filesystem>
#include <stdexcept>

namespace {

/// Lists of all products, and others, that stay open while things happen to them.
class ReadAnew : public Desks
{
protected:
    ReadAnew()
    {
        addProducts({"다", "가", "b", "나", "A"});
        for (const char *end :
             {"ORDER BY PM_Name, PM_AddedDate DESC", "WHERE PM_IsValid <> 0 ORDER BY PM_Catagory",
              "LEFT JOIN tPSOrderDetail d ON d.PM_PK = tPSProductMaster.PM_PK ORDER BY PM_Name",
              "ORDER BY (SELECT COUNT(*) FROM tPSOrderDetail d WHERE d.PM_PK = tPSProductMaster.PM_PK)"})
            lists.push_back(opened(QStringLiteral("SELECT * FROM tPSProductMaster ") + QLatin1String(end)));
        sqlite3_open(":memory:", &kept_);
        openNext();
    }
    ~ReadAnew() override { sqlite3_close(kept_); }

    static QString content(Recordset &rows)
    {
        QStringList lines;
        for (int row = 0; row < rows.rowCount(); ++row) {
            QString line = runtime::text(rows.bookmarkAt(row));
            for (int column = 0; column < rows.fieldNames().size(); ++column)
                line += u'|' + runtime::text(rows.valueAt(row, column));
            lines << line;
        }
        return lines.join(u'\n');
    }
    /// The list read anew, and a clone of it, beside one that has never been read before.
    void expectAsReadWhole(Recordset &list, const std::string &after)
    {
        const auto clone = list.Clone();
        list.Requery();
        clone->Requery();
        const QString whole = content(*opened(list.source()));
        EXPECT_EQ(content(list), whole) << after;
        EXPECT_EQ(content(*clone), whole) << after;
    }
    /// The list that a window opens now and the one that stands open, beside one that has never been read before.
    void expectNextAsReadWhole(const std::string &after)
    {
        const QString before = content(*next_);
        const std::unique_ptr<Recordset> last = std::exchange(next_, nullptr);
        openNext();
        const QString whole = content(*opened(sale));
        EXPECT_EQ(content(*next_), whole) << after;
        EXPECT_EQ(content(*last), before) << after;
        expectAsReadWhole(*last, after);
        last->Sort(QStringLiteral("PM_Name DESC"));
        EXPECT_EQ(last->rowCount(), next_->rowCount()) << after;
    }
    void openNext() { next_ = openedNext(sale); }
    /// Rows that the engine gave for it.
    int rowsRead(const std::function<void()> &act) const
    {
        int rows = 0;
        const auto count = [](unsigned, void *counted, void *, void *) { return ++*static_cast<int *>(counted), 0; };
        sqlite3_trace_v2(handle(), SQLITE_TRACE_ROW, count, &rows);
        act();
        sqlite3_trace_v2(handle(), 0, nullptr, nullptr);
        return rows;
    }
    void happens(const QString &who, const QString &what)
    {
        if (who == u"own")
            what == u"restore" ? copy(handle(), kept_) : run(handle(), what);
        else if (who == u"unseen")
            sqlite3_update_hook(handle(), nullptr, nullptr), run(handle(), what);
        else if (who == u"desk")
            clinic.otherDesk()->Execute(what);
        else if (who == u"list")
            edit(*lists.front());
        else if (who == u"keep")
            copy(kept_, handle());
        else if (what == u"restore")
            asAnotherProgram([this](sqlite3 *other) { copy(other, kept_); });
        else
            asAnotherProgram([&](sqlite3 *other) { run(other, what); });
        if (who.endsWith(u"clock set back")) {
            for (const char *part : {"", "-wal"}) {
                const std::filesystem::path written((file() + QLatin1String(part)).toStdString());
                last_write_time(written, last_write_time(written) - std::chrono::hours(10'000));
            }
        }
    }
    sqlite3 *handle() const { return static_cast<sqlite3 *>(desk->handle()); }

    std::vector<std::unique_ptr<Recordset>> lists;
    const QString sale = QStringLiteral("SELECT * FROM tPSProductMaster WHERE PM_IsHide = 0 OR PM_IsHide IS NULL "
                                        "ORDER BY PM_Name, PM_AddedDate DESC");

private:
    QString file() const { return desk->address().section(u':', 1); }
    static void edit(Recordset &list)
    {
        list.setValue("PM_Name", QStringLiteral("라"));
        list.Update();
        list.AddNew();
        list.setValue("PM_Name", QStringLiteral("a"));
        list.Update();
        list.moveTo(1);
        list.Delete();
    }
    static void run(sqlite3 *handle, const QString &statements)
    {
        if (sqlite3_exec(handle, statements.toUtf8().constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(handle));
    }
    static void copy(sqlite3 *target, sqlite3 *source)
    {
        sqlite3_backup *const copy = sqlite3_backup_init(target, "main", source, "main");
        ASSERT_EQ(sqlite3_backup_step(copy, -1), SQLITE_DONE);
        ASSERT_EQ(sqlite3_backup_finish(copy), SQLITE_OK);
    }
    template <typename Act>
    void asAnotherProgram(Act act)
    {
        sqlite3 *other = nullptr;
        ASSERT_EQ(sqlite3_open(file().toUtf8().constData(), &other), SQLITE_OK);
        act(other);
        sqlite3_close(other);
    }

    sqlite3 *kept_ = nullptr;
    std::unique_ptr<Recordset> next_;
};

} // namespace

TEST_P(ReadAnew, IsAsReadWholeWhoeverWroteInWhatWay)
{
    for (const QStringList &one : casesOf("ado/read-anew.cases", 2)) {
        const std::string line = one.join(u": ").toStdString();
        ASSERT_NO_THROW(happens(one[0], one[1])) << line;
        for (const auto &list : lists)
            expectAsReadWhole(*list, line + ", " + list->source().toStdString());
        expectNextAsReadWhole(line);
    }
}

TEST_P(ReadAnew, ReadsNoMoreThanWasWrittenAndIsShown)
{
    happens("own", "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 2000) INSERT INTO "
                   "tPSProductMaster (PM_Name) SELECT 'n' || i FROM n");
    Recordset &list = *lists.front();
    list.Requery();
    openNext();
    for (const char *name : {"ㄱ", "n1", "힣"}) {
        list.setValue("PM_Name", QString::fromUtf8(name));
        list.Update();
        for (const char *added : {"ㄴ", name}) {
            list.AddNew();
            list.setValue("PM_Name", QString::fromUtf8(added));
            list.Update();
        }
        EXPECT_LT(rowsRead([&] { list.Requery(); }), 100) << name;
        EXPECT_EQ(content(list), content(*opened(list.source()))) << name;
        EXPECT_LT(rowsRead([this] { openNext(); }), 30) << name;
        expectNextAsReadWhole(name);
    }
}

TEST_P(ReadAnew, TakesOverOnlyWhatRowsTellByThemselves)
{
    happens("own", "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 100) INSERT INTO "
                   "tPSProductMaster (PM_Name, PM_IsValid, PM_AddedDate) SELECT 'n', 1, '2026-11-24' FROM n; "
                   "UPDATE tPSProductMaster SET PM_IsHide = 1 WHERE PM_PK = 3");
    const QString plain = QStringLiteral("SELECT * FROM tPSProductMaster ");
    for (const char *end : {"", "WHERE PM_IsHide = 0 OR PM_IsHide IS NULL ORDER BY PM_Name DESC",
                            "WHERE (PM_IsValid <> 0 AND NOT PM_Name IN ('x', 'y')) OR PM_UnitPrice >= 1.5"}) {
        openedNext(plain + QLatin1String(end));
        EXPECT_LT(rowsRead([&] { openedNext(plain + QLatin1String(end)); }), 20) << end;
    }
    for (const char *end : {
             "WHERE PM_PK NOT IN (SELECT PM_PK FROM tPSOrderDetail)",
             "WHERE PM_AddedDate < strftime('%Y-%m-%d', 'now', '1 day')",
             "WHERE PM_AddedDate < CURRENT_TIMESTAMP",
             "WHERE PM_Name LIKE '[a-z]%'",
             "WHERE PM_PK > 0 GROUP BY PM_PK",
             "WHERE PM_PK > 0 LIMIT 50",
             "ORDER BY (SELECT COUNT(*) FROM tPSOrderDetail d WHERE d.PM_PK = tPSProductMaster.PM_PK)",
             "LEFT JOIN tPSOrderDetail d ON d.PM_PK = tPSProductMaster.PM_PK",
             "p WHERE NOT EXISTS (SELECT 1 FROM tPSOrderDetail d WHERE d.PM_PK = p.PM_PK)",
         }) {
        openedNext(plain + QLatin1String(end));
        EXPECT_GE(rowsRead([&] { openedNext(plain + QLatin1String(end)); }), 50) << end;
    }
    for (const char *columns : {"PM_PK, CURRENT_TIMESTAMP", "*, random()", "PM_PK, PM_UnitPrice + 1 AS PM_Name",
                                "PM_PK, (SELECT COUNT(*) FROM tPSOrderDetail)"}) {
        const QString told = QStringLiteral("SELECT %1 FROM tPSProductMaster").arg(QLatin1String(columns));
        openedNext(told);
        EXPECT_GE(rowsRead([&] { openedNext(told); }), 50) << columns;
    }
}

TEST_P(ReadAnew, AnotherStatementAnotherConnectionAndATransactionReadWhole)
{
    const QString backwards = QString(sale).replace(QLatin1String("PM_Name,"), QLatin1String("PM_Name DESC,"));
    const QString names = QString(sale).replace(QLatin1String("*"), QLatin1String("PM_PK, PM_Name, PM_AddedDate"));
    for (const QString &statement : {sale, backwards, names, sale})
        EXPECT_EQ(content(*openedNext(statement)), content(*opened(statement, CursorType::Static)));
    openedNext(sale, clinic.otherDesk())->Close();

    const ado::AbandonedTransactions edge;
    desk->BeginTrans();
    desk->Execute(QStringLiteral("UPDATE tPSProductMaster SET PM_Name = 'x' WHERE PM_PK = 3"));
    const auto within = openedNext(sale);
    EXPECT_EQ(content(*within), content(*opened(sale)));
    desk->RollbackTrans();
    EXPECT_EQ(content(*within), content(*opened(sale)));
    EXPECT_EQ(content(*openedNext(sale)), content(*opened(sale)));
}

INSTANTIATE_TEST_SUITE_P(Engines, ReadAnew, testing::Values(ado::Engine::SQLite), engineName);
