#include "tests/ado/Desks.h"

#include <QThread>

#include <filesystem>

namespace {

/// A clinic's file under a running desk.
class ReplacedFile : public testing::TestWithParam<bool>
{
protected:
    ReplacedFile()
        : file_(folder_.filePath(QStringLiteral("clinic.db")))
        , desk_(make(file_))
    {
    }

    static ado::ConnectionPtr make(const QString &file)
    {
        const ado::ConnectionPtr made = ado::Connection::open(QStringLiteral("sqlite:") + file, true);
        made->Execute(QStringLiteral("CREATE TABLE money (won INTEGER)"));
        return made;
    }
    void pay() { desk_->Execute(QStringLiteral("INSERT INTO money VALUES (1)")); }
    static int paid(const ado::ConnectionPtr &clinic)
    {
        return clinic->read(QStringLiteral("SELECT COUNT(*) FROM money")).raw(0, 0).toInt();
    }
    /// Another file takes its place, or none. Its journal goes with it, or the new one would be read with it.
    void takeAway()
    {
        for (const char *suffix : {"", "-wal", "-shm"})
            std::filesystem::remove((file_ + QLatin1String(suffix)).toStdU16String());
        if (GetParam())
            make(file_);
    }
    /// What a told error leaves: the desk goes on in the new file, and where there is none it makes none.
    void expectNothingWrittenAnywhere()
    {
        EXPECT_FALSE(desk_->inTransaction());
        if (GetParam()) {
            EXPECT_EQ(paid(desk_), 0);
            pay();
            EXPECT_EQ(paid(ado::Connection::open(desk_->address())), 1);
        } else {
            EXPECT_EQ(errorOf([&] { pay(); }), ErrorNumber::ConnectionLost);
            EXPECT_FALSE(std::filesystem::exists(file_.toStdU16String()));
        }
    }

    const QTemporaryDir folder_;
    const QString file_;
    const ado::ConnectionPtr desk_;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(By, ReplacedFile, testing::Bool(),
                         [](const auto &by) { return by.param ? "another" : "none"; });

TEST_P(ReplacedFile, TakesNoWriting)
{
    pay();
    takeAway();
    EXPECT_EQ(errorOf([&] { pay(); }), ErrorNumber::ConnectionLost);
    expectNothingWrittenAnywhere();
}

TEST(ReplacedFileOfProducts, ShowsItsOwnInListsThatKeepTheirRows)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("clinic.db"));
    const auto makeWith = [&](const char *product) {
        const ado::ConnectionPtr made = ado::Connection::open(QStringLiteral("sqlite:") + file, true);
        made->Execute(QStringLiteral("CREATE TABLE tPSProductMaster (PM_PK INTEGER PRIMARY KEY, PM_Name)"));
        made->Execute(
            QStringLiteral("INSERT INTO tPSProductMaster (PM_Name) VALUES ('%1')").arg(QLatin1String(product)));
        return made;
    };
    const ado::ConnectionPtr desk = makeWith("a");
    const auto shown = [&] {
        Recordset list;
        list.openWithKeptRows();
        list.Open(allProducts, desk, CursorType::Static, LockType::ReadOnly);
        return column(list, QStringLiteral("PM_Name"));
    };
    EXPECT_EQ(shown(), "a");
    for (const char *suffix : {"", "-wal", "-shm"})
        std::filesystem::remove((file + QLatin1String(suffix)).toStdU16String());
    makeWith("b");
    EXPECT_EQ(errorOf([&] { desk->Execute(QStringLiteral("DELETE FROM tPSProductMaster")); }),
              ErrorNumber::ConnectionLost);
    EXPECT_EQ(shown(), "b");
}

TEST_P(ReplacedFile, TakesNoTransactionThatBeginsOrEndsInIt)
{
    takeAway();
    desk_->BeginTrans();
    EXPECT_EQ(errorOf([&] { pay(); }), ErrorNumber::ConnectionLost);
    desk_->RollbackTrans();
    expectNothingWrittenAnywhere();
}

TEST_P(ReplacedFile, IsNotReadWithTheLogOfTheOneBefore)
{
    pay(); // which stands in the log
    const auto rename = [](const QString &from, const QString &to) {
        std::filesystem::rename(from.toStdU16String(), to.toStdU16String());
    };
    const QString before = folder_.filePath(QStringLiteral("before.db"));
    const QString another = folder_.filePath(QStringLiteral("another.db"));
    rename(file_, before);
    if (GetParam()) {
        make(another);
        rename(another, file_);
    }
    EXPECT_EQ(errorOf([&] { pay(); }), ErrorNumber::ConnectionLost);
    try {
        paid(desk_);
        ADD_FAILURE() << "read";
    } catch (const runtime::RuntimeError &error) {
        EXPECT_TRUE(error.description().contains(file_)) << error.description().toStdString();
    }
    if (GetParam()) {
        for (const char *suffix : {"-wal", "-shm"})
            rename(file_ + QLatin1String(suffix), before + QLatin1String(suffix));
    } else {
        rename(before, file_); // the log is its own
    }
    QThread::msleep(1100); // a desk does not try again more than once a second
    EXPECT_EQ(paid(desk_), GetParam() ? 0 : 1);
    pay();
    EXPECT_EQ(paid(ado::Connection::open(desk_->address())), GetParam() ? 1 : 2);
    if (GetParam()) {
        EXPECT_EQ(paid(ado::Connection::open(QStringLiteral("sqlite:") + before)), 1) << "what was paid is not lost";
    }
}

TEST_P(ReplacedFile, AcknowledgesNoCommit)
{
    desk_->BeginTrans();
    pay();
    takeAway();
    EXPECT_EQ(errorOf([&] { desk_->CommitTrans(); }), ErrorNumber::ConnectionLost);
    expectNothingWrittenAnywhere();
}
