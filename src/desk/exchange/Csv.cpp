#include "desk/exchange/Csv.h"

#include "desk/schema/Statements.h"
#include "platform/runtime/CsvText.h"

#include <QStringDecoder>

#include <algorithm>

namespace exchange {

namespace {

/// Reads one record after the other.
class Reader
{
public:
    explicit Reader(const QString &text)
        : text_(text)
    {
    }

    bool atEnd() const { return at_ == text_.size(); }

    Record next()
    {
        Record record{line_, {}};
        do
            record.cells << cell();
        while (take(u','));
        endLine();
        return record;
    }

private:
    bool take(char16_t sign)
    {
        if (atEnd() || text_[at_] != sign)
            return false;
        ++at_;
        return true;
    }

    void endLine()
    {
        const bool ended = take(u'\r');
        if (take(u'\n') || ended)
            ++line_;
    }

    QString cell()
    {
        if (take(u'"'))
            return quotedCell();
        const qsizetype from = at_;
        while (!atEnd() && text_[at_] != u',' && text_[at_] != u'\r' && text_[at_] != u'\n')
            ++at_;
        return text_.mid(from, at_ - from);
    }

    QString quotedCell()
    {
        const int begun = line_;
        QString cell;
        for (;;) {
            if (atEnd())
                schema::refuse(QStringLiteral("%1번째 줄: 큰따옴표가 닫히지 않았습니다.").arg(begun));
            const QChar sign = text_[at_++];
            if (sign == u'"' && !take(u'"'))
                break;
            if (sign == u'\n' || (sign == u'\r' && (atEnd() || text_[at_] != u'\n')))
                ++line_;
            cell += sign;
        }
        if (!atEnd() && text_[at_] != u',' && text_[at_] != u'\r' && text_[at_] != u'\n')
            schema::refuse(
                QStringLiteral(
                    "%1번째 줄: 닫는 큰따옴표 뒤에 다른 글자가 있습니다. 값 안의 큰따옴표는 두 번 입력하십시오.")
                    .arg(line_));
        return cell;
    }

    const QString &text_;
    qsizetype at_ = 0;
    int line_ = 1;
};

/// The decoder puts signs of no alphabet in the place of what is none of the page's.
bool isOddSign(QChar sign)
{
    return sign == QChar::ReplacementCharacter || sign == u'\x1a' || (sign >= u'\xe000' && sign <= u'\xf8ff');
}

} // namespace

QString decoded(const QByteArray &bytes)
{
    const QString advice = QStringLiteral("엑셀에서 'CSV UTF-8(쉼표로 분리)' 형식으로 다시 저장하십시오.");
    if (bytes.startsWith("\xff\xfe") || bytes.startsWith("\xfe\xff"))
        schema::refuse(QStringLiteral("UTF-16 파일은 가져올 수 없습니다. ") + advice);
    if (bytes.contains('\0'))
        schema::refuse(QStringLiteral("CSV 파일이 아닙니다. ") + advice);
    const QByteArrayView mark("\xef\xbb\xbf");
    if (QByteArrayView(bytes).isValidUtf8())
        return QString::fromUtf8(bytes.startsWith(mark) ? QByteArrayView(bytes).sliced(mark.size())
                                                        : QByteArrayView(bytes));
    QStringDecoder decoder("windows-949", QStringDecoder::Flag::Stateless);
    const QString text = decoder(bytes);
    const auto odd = std::find_if(text.begin(), text.end(), isOddSign);
    if (!decoder.isValid() || decoder.hasError() || odd != text.end())
        schema::refuse(QStringLiteral("%1번째 줄: UTF-8도 CP949도 아닌 글자가 있습니다. ")
                           .arg(1 + std::count(text.begin(), odd, u'\n'))
                       + advice);
    return text;
}

std::vector<Record> readCsv(const QString &text)
{
    std::vector<Record> records;
    for (Reader reader(text); !reader.atEnd();) {
        Record record = reader.next();
        if (std::ranges::any_of(record.cells, [](const QString &cell) { return !cell.trimmed().isEmpty(); }))
            records.push_back(std::move(record));
    }
    return records;
}

QString csvLine(const QStringList &cells)
{
    QStringList texts;
    for (const QString &cell : cells)
        texts << runtime::csvCell(cell);
    return texts.join(u',') + QStringLiteral("\r\n");
}

} // namespace exchange
