#include "platform/runtime/Attempt.h"
#include "tests/ado/Desks.h"
#include "tests/support/LogLines.h"

/// Whatever a server says of a statement, the log shows no word of it.
class Refusals : public Desks
{
};

TEST_P(Refusals, ShowNothingOfTheStatementInTheLog)
{
    clinic.run(QStringLiteral("INSERT INTO t_HospSetup (HS_KEY) VALUES ('홍길동 (secret)')"));
    const QString insert = QStringLiteral("INSERT INTO tPSCompanyMaster (CM_Name, CM_EtcMemo) VALUES (%1)");
    const QStringList refused{
        insert.arg("'O'홍길동 'secret', ''"),         // near "홍길동"
        insert.arg("'', '\"' 'secret \"홍길동\" ('"), // quotes among the quoted
        insert.arg("'O'\nerror 5 secret\n'', ''"),    // forges a line
        insert.arg("tPSCompanyMaster.secret, ''"),    // named without quotes
        insert.arg("secret('홍길동'), ''"),           // a function that is none
        insert.arg(QStringLiteral("'secret', 'O'%1secret''").arg(QChar(0))),
        insert.arg("'', CAST('홍길동 \"secret' AS no_such_type(1, 2))"),
        QStringLiteral("INSERT INTO t_HospSetup (HS_KEY) VALUES ('홍길동 (secret)')"),
        QStringLiteral("UPDATE t_HospSetup SET HS_KEY = NULL WHERE HS_KEY = '홍길동 (secret)'"),
    };
    LogLines log;
    int failed = 0;
    for (const QString &statement : refused) {
        runtime::Attempt attempt;
        attempt([&] { desk->Execute(statement); });
        failed += attempt.failed() ? 1 : 0;
        for (const QString &line : log.take()) {
            SCOPED_TRACE(line.toStdString());
            for (const char *word : {"홍길동", "secret", "\n"})
                EXPECT_FALSE(line.contains(QString::fromUtf8(word), Qt::CaseInsensitive)) << word;
            EXPECT_TRUE(line.startsWith("zelvo.database error -2147217900 "));
            --failed;
        }
    }
    EXPECT_EQ(failed, 0) << "one line each";
}

TEST_P(Refusals, ShowNoStoredValueThatTheLayerPassesBesideTheStatement)
{
    clinic.run(QStringLiteral("CREATE UNIQUE INDEX one_name ON tPSCompanyMaster (CM_Name)"));
    clinic.run(QStringLiteral("INSERT INTO tPSCompanyMaster (CM_Name) VALUES ('secret'), ('other')"));
    LogLines log;
    const auto rows = opened(QStringLiteral("SELECT * FROM tPSCompanyMaster WHERE CM_Name = 'other'"));
    runtime::Attempt attempt;
    attempt([&] {
        rows->setValue(QStringLiteral("CM_Name"), QStringLiteral("secret"));
        rows->Update();
    });
    EXPECT_TRUE(attempt.failed());
    const QStringList lines = log.take();
    ASSERT_EQ(lines.size(), 1);
    EXPECT_TRUE(lines[0].startsWith("zelvo.database error -2147217900 state ")) << lines[0].toStdString();
    EXPECT_FALSE(lines[0].contains("secret")) << lines[0].toStdString();
}

INSTANTIATE_TEST_SUITE_P(Engines, Refusals, testing::ValuesIn(allEngines), engineName);
