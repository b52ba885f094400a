#include "host/desk/PatientSearch.h"

#include <algorithm>

namespace desk {

namespace {

constexpr char16_t FirstSyllable = u'가';
constexpr char16_t LastSyllable = u'힣';
constexpr int SyllablesPerConsonant = 588;
constexpr char16_t Consonants[] = u"ㄱㄲㄴㄷㄸㄹㅁㅂㅃㅅㅆㅇㅈㅉㅊㅋㅌㅍㅎ";

QString bare(QString text)
{
    return text.remove(QLatin1Char('-')).remove(QLatin1Char(' ')).toLower();
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
    : name_(bare(patient.name))
    , consonants_(initialConsonants(name_))
    , chartNumber_(bare(patient.chartNumber))
    , phone_(bare(patient.phone))
    , cell_(bare(patient.cell))
{
}

bool SearchKey::matches(const QString &typed) const
{
    const QString wanted = bare(typed);
    if (wanted.isEmpty() || name_.contains(wanted) || consonants_.contains(wanted) || chartNumber_.contains(wanted))
        return true;
    return isDigits(wanted) && (phone_.contains(wanted) || cell_.contains(wanted));
}

} // namespace desk
