#include "statistics/ReportRegister.h"

#include "platform/automation/Automation.h"

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStringDecoder>

#include <algorithm>

namespace {

constexpr qint64 mostBytes = qint64{64} * 1024; ///< of a file; some hundred reports

/// One file after the other, line by line.
class Reader
{
public:
    explicit Reader(const QStringList &told)
    {
        for (const QString &programId : told)
            known_ << programId.toLower();
    }

    void read(const QString &path)
    {
        name_ = QFileInfo(path).fileName();
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return remark(QStringLiteral("%1: 읽을 수 없는 파일").arg(name_));
        const QByteArray bytes = file.read(mostBytes + 1);
        QStringDecoder utf8(QStringDecoder::Utf8); // without a byte-order mark
        const QString text = utf8(bytes);
        if (bytes.size() > mostBytes || utf8.hasError())
            return remark(QStringLiteral("%1: UTF-8로 저장한 64KB 이하의 텍스트 파일이어야 합니다.").arg(name_));
        const QStringList lines = text.split(u'\n');
        for (line_ = 1; line_ <= lines.size(); ++line_)
            take(lines[line_ - 1]);
    }

    ReportRegister outcome;

private:
    void take(const QString &line)
    {
        const QString text = line.simplified();
        if (text.isEmpty() || text.startsWith(u'#'))
            return;
        QStringList cells;
        for (const QString &cell : text.split(u'|'))
            cells << cell.simplified();
        const bool whole = cells.size() == 3 && !cells.contains(QString());
        if (!whole || cells[2].count(u'.') != 1 || cells[2].startsWith(u'.') || cells[2].endsWith(u'.'))
            return remarkOnLine(QStringLiteral("'제목 | 묶음 | 라이브러리.클래스'로 입력하십시오."));
        if (known_.contains(cells[2].toLower()))
            return remarkOnLine(QStringLiteral("이미 있는 통계: ") + cells[2]);
        known_ << cells[2].toLower();
        outcome.reports.push_back({cells[0], cells[1], cells[2]});
        if (!QFile::exists(automation::classRegister::libraryOf(cells[2])))
            remarkOnLine(QStringLiteral("설치되지 않은 통계: ") + cells[2]);
    }

    void remarkOnLine(const QString &what)
    {
        remark(QStringLiteral("%1 %2번째 줄: %3").arg(name_).arg(line_).arg(what));
    }
    void remark(const QString &text) { outcome.remarks << text; }

    QStringList known_; ///< identifiers in small letters
    QString name_;
    qsizetype line_ = 0;
};

} // namespace

QStringList ReportRegister::files()
{
    QStringList found =
        QStandardPaths::locateAll(QStandardPaths::GenericConfigLocation, QStringLiteral("zelvo-reports.txt"));
    std::ranges::reverse(found);
    return found;
}

ReportRegister ReportRegister::read(const QStringList &files, const QStringList &told)
{
    Reader reader(told);
    for (const QString &file : files)
        reader.read(file);
    return reader.outcome;
}
