#include "desk/window/PatientSearch.h"

#include <algorithm>

namespace desk {

namespace {

constexpr char16_t FirstSyllable = u'가';
constexpr char16_t LastSyllable = u'힣';
constexpr int SyllablesPerConsonant = 588;
constexpr char16_t Consonants[] = u"ㄱㄲㄴㄷㄸㄹㅁㅂㅃㅅㅆㅇㅈㅉㅊㅋㅌㅍㅎ";

constexpr QChar Border = u'\n'; ///< between texts that are searched together; nobody types one

void appendBare(QString &target, const QString &text)
{
    for (const QChar sign : text) {
        if (sign != u'-' && sign != u' ')
            target += sign.toLower();
    }
}

QString bare(const QString &text)
{
    QString result;
    appendBare(result, text);
    return result;
}

bool isDigits(const QString &text)
{
    return std::all_of(text.begin(), text.end(), [](QChar sign) { return sign.isDigit(); });
}

} // namespace

QString initialConsonants(const QString &text)
{
    QString result;
    result.reserve(text.size());
    for (const QChar sign : text) {
        const char16_t code = sign.unicode();
        const bool syllable = code >= FirstSyllable && code <= LastSyllable;
        result += syllable ? QChar(Consonants[(code - FirstSyllable) / SyllablesPerConsonant]) : sign;
    }
    return result;
}

SearchKey::SearchKey(const Patient &patient)
{
    words_.reserve(2 * patient.name.size() + patient.chartNumber.size() + 2);
    appendBare(words_, patient.name);
    const QString consonants = initialConsonants(words_);
    words_.append(Border).append(consonants).append(Border);
    appendBare(words_, patient.chartNumber);
    telephones_.reserve(patient.phone.size() + patient.cell.size() + 1);
    appendBare(telephones_, patient.phone);
    telephones_.append(Border);
    appendBare(telephones_, patient.cell);
}

bool SearchKey::matches(const QString &typed) const
{
    const QString wanted = bare(typed);
    return wanted.isEmpty() || words_.contains(wanted) || (isDigits(wanted) && telephones_.contains(wanted));
}

} // namespace desk
