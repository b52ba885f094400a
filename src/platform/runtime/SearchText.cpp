#include "platform/runtime/SearchText.h"

#include <algorithm>

namespace runtime {

namespace {

constexpr char16_t FirstSyllable = u'가';
constexpr char16_t LastSyllableOfAll = u'힣';
constexpr int SyllablesPerVowel = 28; ///< one without a final consonant, then one for each
constexpr int SyllablesPerConsonant = 588;
constexpr QStringView Initials = u"ㄱㄲㄴㄷㄸㄹㅁㅂㅃㅅㅆㅇㅈㅉㅊㅋㅌㅍㅎ";
constexpr QStringView Finals = u"-ㄱㄲㄳㄴㄵㄶㄷㄹㄺㄻㄼㄽㄾㄿㅀㅁㅂㅄㅅㅆㅇㅈㅊㅋㅌㅍㅎ";

constexpr char16_t Border = u'\n'; ///< behind each text; no searchable text holds one

/// Two consonants that a keyboard draws together to one sign.
struct Cluster
{
    char16_t sign;
    char16_t first;
    char16_t second;
};
constexpr Cluster Clusters[] = {
    {u'ㄳ', u'ㄱ', u'ㅅ'}, {u'ㄵ', u'ㄴ', u'ㅈ'}, {u'ㄶ', u'ㄴ', u'ㅎ'}, {u'ㄺ', u'ㄹ', u'ㄱ'},
    {u'ㄻ', u'ㄹ', u'ㅁ'}, {u'ㄼ', u'ㄹ', u'ㅂ'}, {u'ㄽ', u'ㄹ', u'ㅅ'}, {u'ㄾ', u'ㄹ', u'ㅌ'},
    {u'ㄿ', u'ㄹ', u'ㅍ'}, {u'ㅀ', u'ㄹ', u'ㅎ'}, {u'ㅄ', u'ㅂ', u'ㅅ'},
};

const Cluster *clusterOf(char16_t sign)
{
    const auto found = std::ranges::find(Clusters, sign, &Cluster::sign);
    return found == std::end(Clusters) ? nullptr : found;
}

bool isSyllable(char16_t code)
{
    return code >= FirstSyllable && code <= LastSyllableOfAll;
}

/// How many vowels follow in the alphabet that are typed by going on from this one: ㅗ to ㅘ, ㅙ and ㅚ.
int furtherVowels(int vowel)
{
    switch (vowel) {
    case 8:  // ㅗ
    case 13: // ㅜ
        return 3;
    case 9:  // ㅘ
    case 14: // ㅝ
    case 18: // ㅡ
        return 1;
    default:
        return 0;
    }
}

/// Syllables that came in parts, as some systems write them, are put together.
bool isInParts(QStringView text)
{
    return std::ranges::any_of(text, [](QChar sign) { return sign.unicode() >= 0x1100 && sign.unicode() < 0x1200; });
}

bool isPartOfWord(QChar sign)
{
    return sign.isLetterOrNumber() || sign == u'-';
}

} // namespace

void appendSearchable(QString &target, QStringView text)
{
    if (isInParts(text))
        return appendSearchable(target, text.toString().normalized(QString::NormalizationForm_C));
    const qsizetype before = target.size();
    target.resize(before + text.size());
    QChar *out = target.data() + before;
    for (const QChar sign : text) {
        if (isSyllable(sign.unicode()))
            *out++ = sign;
        else if (sign != u'-' && !sign.isSpace())
            *out++ = sign.toLower();
    }
    target.truncate(out - target.constData());
}

SearchPattern::SearchPattern(const QString &typed, LastSyllable last)
{
    QString searchable;
    appendSearchable(searchable, typed);
    for (const QChar sign : std::as_const(searchable)) {
        const Cluster *const cluster = clusterOf(sign.unicode());
        add(cluster ? cluster->first : sign.unicode());
        if (cluster)
            add(cluster->second);
    }
    if (last == LastSyllable::Begun && !isEmpty() && isSyllable(signs_.back().self))
        beginLast();
}

void SearchPattern::add(char16_t code)
{
    const qsizetype initial = Initials.indexOf(QChar(code));
    if (initial < 0)
        return signs_.push_back({code, code, code});
    const int first = FirstSyllable + int(initial) * SyllablesPerConsonant;
    signs_.push_back({code, char16_t(first), char16_t(first + SyllablesPerConsonant - 1)});
}

/// The last syllable may get a further vowel or a final consonant, or give the one it has to the next syllable.
void SearchPattern::beginLast()
{
    const char16_t code = signs_.back().self;
    const int place = code - FirstSyllable;
    const int final = place % SyllablesPerVowel;
    if (final == 0) {
        const int vowel = place % SyllablesPerConsonant / SyllablesPerVowel;
        signs_.back().last = char16_t(code + (furtherVowels(vowel) + 1) * SyllablesPerVowel - 1);
        return;
    }
    const char16_t consonant = Finals[final].unicode();
    const Cluster *const cluster = clusterOf(consonant);
    const auto stays = cluster ? int(Finals.indexOf(QChar(cluster->first))) : 0;
    const auto rest = char16_t(code - final + stays);
    signs_.back() = {rest, rest, rest};
    add(cluster ? cluster->second : consonant);
}

bool SearchPattern::isDigits() const
{
    return std::ranges::all_of(signs_, [](const Sign &sign) { return QChar(sign.self).isDigit(); });
}

qsizetype SearchPattern::indexIn(QStringView searchable, qsizetype from) const
{
    if (signs_.empty())
        return from;
    const auto length = qsizetype(signs_.size());
    const char16_t *const text = searchable.utf16();
    const Sign first = signs_.front();
    for (qsizetype at = from; at + length <= searchable.size(); ++at) {
        if (!first.fits(text[at]))
            continue;
        qsizetype fitting = 1;
        while (fitting < length && signs_[std::size_t(fitting)].fits(text[at + fitting]))
            ++fitting;
        if (fitting == length)
            return at;
    }
    return -1;
}

bool hasWord(const QString &text, const QString &word)
{
    if (word.isEmpty())
        return false;
    for (qsizetype at = 0; (at = text.indexOf(word, at, Qt::CaseInsensitive)) >= 0; ++at) {
        const qsizetype end = at + word.size();
        if ((at == 0 || !isPartOfWord(text[at - 1])) && (end == text.size() || !isPartOfWord(text[end])))
            return true;
    }
    return false;
}

void SearchTexts::clear()
{
    texts_.clear();
    ends_.clear();
}

void SearchTexts::add(QStringView text)
{
    appendSearchable(texts_, text);
    texts_.append(QChar(Border));
}

void SearchTexts::endRow()
{
    ends_.push_back(texts_.size());
}

std::vector<int> SearchTexts::find(const QString &typed) const
{
    const SearchPattern asTyped(typed);
    if (asTyped.isEmpty())
        return {};
    std::vector<int> found = find(asTyped);
    return found.empty() ? find(SearchPattern(typed, SearchPattern::LastSyllable::Begun)) : found;
}

std::vector<int> SearchTexts::find(const SearchPattern &pattern) const
{
    std::vector<int> found;
    std::size_t row = 0;
    for (qsizetype at = 0; (at = pattern.indexIn(texts_, at)) >= 0; at = ends_[row]) {
        while (ends_[row] <= at)
            ++row;
        found.push_back(int(row));
    }
    return found;
}

} // namespace runtime
