#include "components/frame/Sheet.h"

#include "platform/runtime/Format.h"

#include <QVariant>

#include <algorithm>

namespace statistics {

QString plainText(const Cell &cell)
{
    if (const auto *text = std::get_if<QString>(&cell))
        return *text;
    if (const auto *number = std::get_if<runtime::Currency>(&cell))
        return number->toText();
    return {};
}

QString shownText(const Cell &cell)
{
    const auto *number = std::get_if<runtime::Currency>(&cell);
    if (!number)
        return plainText(cell);
    const QString plain = number->toText();
    const qsizetype point = plain.indexOf(QLatin1Char('.'));
    if (point < 0)
        return runtime::Format(QVariant::fromValue(*number), QStringLiteral("#,##0"));
    return runtime::Format(QVariant::fromValue(*number),
                           QStringLiteral("#,##0.") + QString(plain.size() - point - 1, QLatin1Char('0')));
}

namespace {

/// Of its plain text.
qsizetype lettersOf(runtime::Currency number)
{
    const std::uint64_t scaled = number.scaled() < 0 ? -std::uint64_t(number.scaled()) : std::uint64_t(number.scaled());
    qsizetype letters = number.scaled() < 0 ? 2 : 1;
    for (std::uint64_t whole = scaled / runtime::Currency::Scale; whole >= 10; whole /= 10)
        ++letters;
    const std::uint64_t fraction = scaled % runtime::Currency::Scale;
    return fraction == 0 ? letters : number.toText().size();
}

/// Hangul is twice as wide as digits.
qsizetype lettersOf(const Cell &cell)
{
    constexpr char16_t firstWide = 0x1100;
    if (const auto *number = std::get_if<runtime::Currency>(&cell))
        return lettersOf(*number);
    const auto *text = std::get_if<QString>(&cell);
    return !text ? 0 : text->size() + std::count_if(text->begin(), text->end(), [](QChar c) {
                           return c >= QChar(firstWide);
                       });
}

} // namespace

QString longestText(const std::vector<Row> &rows, std::size_t column)
{
    const Cell *longest = nullptr;
    qsizetype most = 0;
    for (const Row &row : rows) {
        const qsizetype letters = lettersOf(row[column]);
        if (letters > most) {
            most = letters;
            longest = &row[column];
        }
    }
    return longest ? shownText(*longest) : QString();
}

bool isBefore(const Cell &a, const Cell &b)
{
    return a < b; // Hangul stands in the order of its alphabet as it is
}

bool isNumber(const Cell &cell)
{
    return std::holds_alternative<runtime::Currency>(cell);
}

controls::Ink inkOf(const Cell &cell)
{
    const auto *number = std::get_if<runtime::Currency>(&cell);
    if (!number || *number > runtime::Currency())
        return controls::Ink::Plain;
    return number->isZero() ? controls::Ink::Faint : controls::Ink::Negative;
}

bool holdsUnknown(const Sheet &sheet)
{
    const auto isUnknown = [](const Cell &cell) {
        const auto *text = std::get_if<QString>(&cell);
        return text && *text == unknownSign;
    };
    const auto within = [&](const Row &row) {
        for (std::size_t column = 0; column < row.size(); ++column) {
            if (sheet.columns[column].kind != Column::Kind::Text && isUnknown(row[column]))
                return true;
        }
        return false;
    };
    const auto inLine = [&](const SummaryLine &line) { return isUnknown(line.amount); };
    return within(sheet.totals) || std::any_of(sheet.rows.begin(), sheet.rows.end(), within)
           || std::any_of(sheet.summary.begin(), sheet.summary.end(), inLine);
}

} // namespace statistics
