#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <ostream>

namespace {

struct Outcome
{
    int status = -1;
    QString output;
    QString complaint;
};

/// The built desk, with a user's folders of its own.
class CommandLine : public testing::Test
{
protected:
    Outcome desk(const QStringList &arguments)
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char *folder : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_RUNTIME_DIR", "HOME"})
            environment.insert(QString::fromLatin1(folder), folder_.path());
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        process.setProcessEnvironment(environment);
        process.start(QCoreApplication::applicationDirPath() + QStringLiteral("/desk"), arguments);
        if (!process.waitForFinished(60'000)) {
            process.kill();
            process.waitForFinished();
            return {-1, {}, QStringLiteral("did not end")};
        }
        const int status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
        return {status, QString::fromUtf8(process.readAllStandardOutput()), QString::fromUtf8(process.readAllStandardError())};
    }

    QString inFolder(const QString &name) const { return folder_.filePath(name); }
    QString address(const QString &name) const { return QStringLiteral("sqlite:") + inFolder(name); }
    void write(const QString &name, const QByteArray &content) const
    {
        QFile file(inFolder(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }

    QTemporaryDir folder_;
};

} // namespace

TEST_F(CommandLine, AnswersWrongUseWithAMessageAndStatusTwo)
{
    write(QStringLiteral("bare.db"), {});
    write(QStringLiteral("notes.txt"), QByteArray(5'000, 'x'));
    ASSERT_EQ(desk({QStringLiteral("--database"), address(QStringLiteral("clinic.db")), QStringLiteral("--make"),
                    QStringLiteral("small")})
                  .status,
              0);
    const QString clinic = address(QStringLiteral("clinic.db"));
    const struct
    {
        QStringList arguments;
        const char *complaint;
    } uses[]{
        {{QStringLiteral("--patients")}, "모르는 옵션입니다: --patients"},
        {{QStringLiteral("clinic.db")}, "모르는 옵션입니다: clinic.db"},
        {{QStringLiteral("--make")}, "옵션에 값이 없습니다: --make"},
        {{QStringLiteral("--database"), QStringLiteral("--manage")}, "옵션에 값이 없습니다: --database"},
        {{QStringLiteral("--make"), QStringLiteral("huge")}, "empty, small, large 중 하나"},
        {{QStringLiteral("--patient"), QStringLiteral("첫째")}, "환자 번호를 쓰십시오"},
        {{QStringLiteral("--patient"), QStringLiteral("0")}, "환자 번호를 쓰십시오"},
        {{QStringLiteral("--manage")}, "--patient와 함께"},
        {{QStringLiteral("--make"), QStringLiteral("small"), QStringLiteral("--patient"), QStringLiteral("1")}, "함께 쓸 수 없습니다"},
        {{QStringLiteral("--walk"), inFolder(QStringLiteral("out")), QStringLiteral("--database"), clinic}, "함께 쓸 수 없습니다"},
        {{QStringLiteral("--patient"), QStringLiteral("1"), QStringLiteral("--patient"), QStringLiteral("2")}, "두 번"},
        {{QStringLiteral("--database"), clinic, QStringLiteral("--patient"), QStringLiteral("31")}, "환자가 없습니다: 31"},
        {{QStringLiteral("--database"), address(QStringLiteral("none.db"))}, "none.db"},
        {{QStringLiteral("--database"), inFolder(QStringLiteral("clinic.db"))}, "주소"},
        {{QStringLiteral("--database"), QStringLiteral("postgresql://nobody@127.0.0.1:1/none")}, "연결할 수 없습니다"},
        {{QStringLiteral("--database"), QStringLiteral("odbc:DRIVER={no such driver}")}, "연결할 수 없습니다"},
        {{QStringLiteral("--database"), address(QStringLiteral("bare.db"))}, "테이블이 없는"},
        {{QStringLiteral("--database"), address(QStringLiteral("notes.txt"))}, "notes.txt"},
        {{QStringLiteral("--database"), clinic, QStringLiteral("--make"), QStringLiteral("empty")}, "이미 있는"},
        {{QStringLiteral("--database"), address(QStringLiteral("no/such/folder.db")), QStringLiteral("--make"), QStringLiteral("empty")},
         "데이터베이스"},
    };
    for (const auto &use : uses) {
        const Outcome outcome = desk(use.arguments);
        const std::string told = use.arguments.join(u' ').toStdString();
        EXPECT_EQ(outcome.status, 2) << told;
        EXPECT_TRUE(outcome.complaint.contains(QString::fromUtf8(use.complaint))) << told << "\n" << outcome.complaint.toStdString();
    }
    EXPECT_FALSE(QFile::exists(inFolder(QStringLiteral("none.db"))));
    EXPECT_FALSE(QFile::exists(inFolder(QStringLiteral("out"))));
}

TEST_F(CommandLine, MakesTheDefaultClinicInTheUsersFolder)
{
    EXPECT_EQ(desk({QStringLiteral("--make"), QStringLiteral("small")}).status, 0);
    EXPECT_TRUE(QFile::exists(inFolder(QStringLiteral("zelvo-desk/small.db"))));
    EXPECT_EQ(desk({QStringLiteral("--make"), QStringLiteral("small")}).status, 2);
}

TEST_F(CommandLine, TellsItsOptionsWhenAsked)
{
    const Outcome outcome = desk({QStringLiteral("--help")});
    EXPECT_EQ(outcome.status, 0);
    for (const char *option : {"--database", "--make", "--patient", "--manage", "--walk"})
        EXPECT_TRUE(outcome.output.contains(QString::fromLatin1(option))) << option;
}
