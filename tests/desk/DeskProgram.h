#pragma once

#include <QCoreApplication>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

/// The built desk, with a user's folders of its own.
class DeskProgram : public testing::Test
{
protected:
    struct Outcome
    {
        int status = -1; ///< -1: it crashed or hung
        QString output;
        QString complaint;
    };

    void start(QProcess &process, const QStringList &arguments) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char *folder : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_RUNTIME_DIR", "XDG_STATE_HOME", "HOME"})
            environment.insert(QString::fromLatin1(folder), folder_.path());
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        process.setProcessEnvironment(environment);
        process.start(QCoreApplication::applicationDirPath() + QStringLiteral("/desk"), arguments);
    }
    static Outcome outcomeOf(QProcess &process)
    {
        if (!process.waitForFinished(60'000)) {
            process.kill();
            process.waitForFinished();
            return {-1, {}, QStringLiteral("did not end")};
        }
        const int status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
        return {status, QString::fromUtf8(process.readAllStandardOutput()),
                QString::fromUtf8(process.readAllStandardError())};
    }
    Outcome desk(const QStringList &arguments) const
    {
        QProcess process;
        start(process, arguments);
        return outcomeOf(process);
    }

    const QTemporaryDir folder_;
};
