#include "desk/backup/DumpScript.h"

#include "desk/backup/Refusal.h"

#include <QRegularExpression>

namespace backup {

namespace {

QString bare(const QString &name)
{
    return name.startsWith(u'"') ? name.mid(1, name.size() - 2).replace(QStringLiteral("\"\""), QStringLiteral("\""))
                                 : name;
}

void readRows(QIODevice &script, const ScriptReader &reader, bool wanted)
{
    for (;;) {
        const QByteArray line = script.readLine();
        if (line.isEmpty())
            refuse(QStringLiteral("백업의 내용을 끝까지 읽지 못했습니다. 디스크를 확인한 뒤 다시 시도하십시오."));
        if (line == "\\.\n")
            break;
        if (wanted)
            reader.row(line);
    }
    if (wanted)
        reader.end();
}

} // namespace

void readScript(QIODevice &script, const ScriptReader &reader)
{
    static const QRegularExpression head(
        QStringLiteral(R"re(^COPY (?:"[^"]+"|[^".]+)\.(\S+) \((.*)\) FROM stdin;$)re"));
    static const QRegularExpression counter(
        QStringLiteral(R"re(^SELECT pg_catalog\.setval\('[^']*?([^'."]+)"?', (\d+), (true|false)\);$)re"));
    for (QByteArray line = script.readLine(); !line.isEmpty(); line = script.readLine()) {
        if (!line.startsWith("COPY ") && !line.startsWith("SELECT pg_catalog.setval("))
            continue;
        const QString text = QString::fromUtf8(line).trimmed();
        if (const QRegularExpressionMatch counted = counter.match(text); counted.hasMatch())
            reader.counter(counted.captured(1),
                           counted.captured(2).toLongLong() + (counted.captured(3) == QLatin1String("true") ? 1 : 0));
        const QRegularExpressionMatch begun = head.match(text);
        if (!begun.hasMatch())
            continue;
        QStringList columns;
        const QStringList names = begun.captured(2).split(QStringLiteral(", "));
        for (const QString &name : names)
            columns << bare(name);
        readRows(script, reader, reader.begin(bare(begun.captured(1)), columns));
    }
}

} // namespace backup
