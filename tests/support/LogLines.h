#pragma once

#include "platform/runtime/Log.h"

#include <QStringList>
#include <QtGlobal>

#include <utility>

/// What the program says in its own categories while one lives.
class LogLines
{
public:
    LogLines()
    {
        runtime::sayErrors();
        lines_.clear();
        earlier_ = qInstallMessageHandler([](QtMsgType, const QMessageLogContext &context, const QString &message) {
            if (QByteArray(context.category).startsWith("zelvo."))
                lines_ << QString::fromLatin1(context.category) + u' ' + message;
        });
    }
    ~LogLines() { qInstallMessageHandler(earlier_); }
    LogLines(const LogLines &) = delete;
    LogLines &operator=(const LogLines &) = delete;

    QStringList take() { return std::exchange(lines_, {}); }

private:
    static inline QStringList lines_;
    QtMessageHandler earlier_;
};
