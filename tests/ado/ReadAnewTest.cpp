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
    void happens(const QString &who, const QString &what)
    {
        if (who == u"own")
            what == u"restore" ? copy(handle(), kept_) : run(handle(), what);
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
};

} // namespace

TEST_P(ReadAnew, IsAsReadWholeWhoeverWroteInWhatWay)
{
    for (const QStringList &one : casesOf("ado/read-anew.cases", 2)) {
        const std::string line = one.join(u": ").toStdString();
        ASSERT_NO_THROW(happens(one[0], one[1])) << line;
        for (const auto &list : lists)
            expectAsReadWhole(*list, line + ", " + list->source().toStdString());
    }
}

TEST_P(ReadAnew, ReadsNoMoreThanWasWrittenAndIsShown)
{
    happens("own", "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 2000) INSERT INTO "
                   "tPSProductMaster (PM_Name) SELECT 'n' || i FROM n");
    Recordset &list = *lists.front();
    list.Requery();
    int rows = 0;
    const auto count = [](unsigned, void *counted, void *, void *) { return ++*static_cast<int *>(counted), 0; };
    for (const char *name : {"ㄱ", "n1", "힣"}) {
        list.setValue("PM_Name", QString::fromUtf8(name));
        list.Update();
        for (const char *added : {"ㄴ", name}) {
            list.AddNew();
            list.setValue("PM_Name", QString::fromUtf8(added));
            list.Update();
        }
        rows = 0;
        sqlite3_trace_v2(handle(), SQLITE_TRACE_ROW, count, &rows);
        list.Requery();
        sqlite3_trace_v2(handle(), 0, nullptr, nullptr);
        EXPECT_LT(rows, 100) << name;
        EXPECT_EQ(content(list), content(*opened(list.source()))) << name;
    }
}

INSTANTIATE_TEST_SUITE_P(Engines, ReadAnew, testing::Values(ado::Engine::SQLite), engineName);
