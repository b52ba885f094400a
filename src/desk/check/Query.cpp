#include "desk/check/Query.h"

#include "platform/runtime/RuntimeError.h"

#include <QDir>
#include <QFile>

namespace check {

namespace {

const QString TitleMark = QStringLiteral("-- 제목:");
const QString RemedyMark = QStringLiteral("-- 조치:");

[[noreturn]] void refuse(const QString &what)
{
    throw runtime::RuntimeError(runtime::ErrorNumber::InvalidCall,
                                QStringLiteral("검사 항목을 읽을 수 없습니다: ") + what);
}

} // namespace

Query readQuery(const QString &text)
{
    Query query;
    QStringList statement;
    for (const QString &line : text.split(u'\n')) {
        if (line.startsWith(TitleMark))
            query.title = line.mid(TitleMark.size()).trimmed();
        else if (line.startsWith(RemedyMark))
            query.remedy = line.mid(RemedyMark.size()).trimmed();
        else if (!line.startsWith(QLatin1String("--")))
            statement << line;
    }
    query.statement = statement.join(u'\n').trimmed();
    if (query.title.isEmpty() || query.remedy.isEmpty() || query.statement.isEmpty())
        refuse(text);
    return query;
}

std::vector<Query> queries()
{
    std::vector<Query> all;
    const QDir folder(QStringLiteral(":/check/queries"));
    for (const QString &name : folder.entryList(QDir::Files, QDir::Name)) {
        QFile file(folder.filePath(name));
        if (!file.open(QIODevice::ReadOnly))
            refuse(name);
        all.push_back(readQuery(QString::fromUtf8(file.readAll())));
    }
    if (all.empty())
        refuse(folder.path());
    return all;
}

} // namespace check
