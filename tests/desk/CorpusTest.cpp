#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gmock/gmock.h>

using testing::HasSubstr;

namespace {

/// The built desk over the files of tests/corpus, in a folder of its own.
class Corpus : public testing::Test
{
protected:
    struct Answer
    {
        int status = -1; ///< -1: it crashed or hung
        std::string text;
    };
    Answer desk(const QStringList &arguments) const
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char *folder : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_RUNTIME_DIR", "XDG_STATE_HOME", "HOME"})
            environment.insert(QString::fromLatin1(folder), folder_.path());
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(QCoreApplication::applicationDirPath() + "/desk", arguments);
        if (!process.waitForFinished(30'000)) {
            process.kill();
            process.waitForFinished();
            return {-1, "did not end"};
        }
        return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
                process.readAll().toStdString()};
    }
    QByteArray contentOf(const QString &name) const
    {
        QFile file(folder_.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        return file.readAll();
    }
    void take(const QString &name) const
    {
        ASSERT_TRUE(QFile::copy(QStringLiteral(CORPUS "/") + name, folder_.filePath(name)));
        QFile::setPermissions(folder_.filePath(name), QFile::ReadOwner | QFile::WriteOwner);
    }

    const QTemporaryDir folder_;
};

} // namespace

TEST_F(Corpus, OfDamagedAndForeignFilesIsToldAndLeftAsItIs)
{
    // The text that the file is told by; the status is 0 or 1 where it is none. Without one for the window a box waits there.
    const struct
    {
        const char *file, *check, *backup, *window;
    } cases[] = {
        {"whole.db", "", "", ""},
        {"utf16.db", "", "", ""},
        {"bytes.db", "", "", ""},
        {"hostile.db", "", "", ""},
        {"view.db", "", "Customer: 없는 테이블", ""},
        {"numbers.db", "", "", nullptr},
        {"index.db", "missing from index", "손상된", ""},
        {"cells.db", "손상된", "손상된", nullptr},
        {"page.db", "손상된", "손상된", nullptr},
        {"truncated.db", "손상된", "손상된", "손상된"},
        {"first-page-only.db", "손상된", "손상된", "손상된"},
        {"definitions.db", "손상된", "손상된", "손상된"},
        {"magic.db", "손상된", "손상된", "손상된"},
        {"page-size.db", "손상된", "손상된", "손상된"},
        {"newer-format.db", "손상된", "손상된", "손상된"},
        {"text.db", "손상된", "손상된", "손상된"},
        {"zeros.db", "손상된", "손상된", "손상된"},
        {"empty.db", "테이블이 없는", "한의원 데이터베이스가 아닙니다", "테이블이 없는"},
        {"no-tables.db", "테이블이 없는", "한의원 데이터베이스가 아닙니다", "테이블이 없는"},
        {"foreign.db", "테이블이 없는", "한의원 데이터베이스가 아닙니다", "테이블이 없는"},
        {"foreign-log.db", "테이블이 없는", "한의원 데이터베이스가 아닙니다", "테이블이 없는"},
        {"no-table.db", "테이블이 없는", "한의원 데이터베이스가 아닙니다", "테이블이 없는"},
        {"other-shape.db", "테이블이 없는", "한의원 데이터베이스가 아닙니다", "테이블이 없는"},
        {"log-alone.db", "파일이 없습니다", "파일이 없습니다", "파일이 없습니다"},
    };
    for (const QString &name : QDir(QStringLiteral(CORPUS)).entryList({"*.db", "*.db-wal"}, QDir::Files))
        take(name);
    QStringList there = QDir(folder_.path()).entryList(QDir::Files);
    for (const auto &one : cases) {
        const QString name = QString::fromLatin1(one.file);
        const bool isThere = there.removeAll(name) == 1;
        const QByteArray before = isThere ? contentOf(name) : QByteArray();
        const QString copy = folder_.filePath(name + ".copy");
        const QStringList window =
            one.window ? QStringList{"--patient", "1", "--until-shown"} : QStringList{"--until-shown"};
        const std::pair<QStringList, const char *> uses[] = {
            {{"--check"}, one.check}, {{"--backup", copy}, one.backup}, {window, one.window ? one.window : ""}};
        for (const auto &[use, text] : uses) {
            SCOPED_TRACE(name.toStdString() + ' ' + use.join(' ').toStdString());
            const Answer answer = desk(QStringList{"--database", "sqlite:" + folder_.filePath(name)} + use);
            EXPECT_THAT(answer.text, HasSubstr(text));
            EXPECT_TRUE(*text ? answer.status == 2 : answer.status == 0 || answer.status == 1)
                << answer.status << answer.text;
            EXPECT_EQ(QFile::exists(copy), use[0] == "--backup" && !*text);
            if (isThere)
                EXPECT_TRUE(contentOf(name) == before);
            else
                EXPECT_FALSE(QFile::exists(folder_.filePath(name)));
            QFile::remove(copy);
        }
    }
    EXPECT_EQ(there, QStringList{"log-alone.db-wal"}) << "a file without a row above";
}
