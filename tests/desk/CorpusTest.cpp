#include "tests/desk/DeskProgram.h"
#include "tests/support/Cases.h"

#include <QDir>
#include <QFile>

namespace {

/// Over the files of tests/corpus.
class Corpus : public DeskProgram
{
protected:
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
};

} // namespace

TEST_F(Corpus, OfDamagedAndForeignFilesIsToldAndLeftAsItIs)
{
    for (const QString &name : QDir(QStringLiteral(CORPUS)).entryList({"*.db", "*.db-wal"}, QDir::Files))
        take(name);
    QStringList there = QDir(folder_.path()).entryList(QDir::Files);
    for (const QStringList &one : casesOf("corpus/answers.cases", 4)) {
        const QString &name = one[0];
        const bool isThere = there.removeAll(name) == 1;
        const QByteArray before = isThere ? contentOf(name) : QByteArray();
        const QString copy = folder_.filePath(name + ".copy");
        const bool box = one[3] == "(a box)";
        const QStringList window = box ? QStringList{"--until-shown"} : QStringList{"--patient", "1", "--until-shown"};
        const std::pair<QStringList, QString> uses[] = {
            {{"--check"}, one[1]}, {{"--backup", copy}, one[2]}, {window, box ? QString() : one[3]}};
        for (const auto &[use, text] : uses) {
            SCOPED_TRACE(name.toStdString() + ' ' + use.join(' ').toStdString());
            const Outcome outcome = desk(QStringList{"--database", "sqlite:" + folder_.filePath(name)} + use);
            const QString told = outcome.output + outcome.complaint;
            EXPECT_TRUE(told.contains(text)) << told.toStdString();
            EXPECT_TRUE(text.isEmpty() ? outcome.status == 0 || outcome.status == 1 : outcome.status == 2)
                << outcome.status << told.toStdString();
            EXPECT_EQ(QFile::exists(copy), use[0] == "--backup" && text.isEmpty());
            if (isThere)
                EXPECT_TRUE(contentOf(name) == before);
            else
                EXPECT_FALSE(QFile::exists(folder_.filePath(name)));
            QFile::remove(copy);
        }
    }
    EXPECT_EQ(there, QStringList{"log-alone.db-wal"}) << "a file without a row in answers.cases";
}
