#pragma once

#include <QString>
#include <QStringView>

#include <vector>

namespace runtime {

/// Appends a text as it is searched: small letters, without blanks, line breaks and hyphens.
void appendSearchable(QString &target, QStringView text);

/// What somebody typed to look for something; letter case, blanks and hyphens do not count. A consonant that stands alone
/// fits every syllable that begins with it: "ㄱㅇㄱ" and "경ㅇ" both fit "경옥고".
class SearchPattern
{
public:
    /// How the last syllable is taken. One that is only begun fits what it may become by further keys: "호" fits "홍", and
    /// "삵" fits "살구".
    enum class LastSyllable { AsTyped, Begun };

    explicit SearchPattern(const QString &typed, LastSyllable last = LastSyllable::AsTyped);

    bool isEmpty() const { return signs_.empty(); }
    bool isDigits() const;
    /// Where it fits first in a searchable text, from that place on; -1 where it does not.
    qsizetype indexIn(QStringView searchable, qsizetype from = 0) const;

private:
    /// Fits one character, or all of a range.
    struct Sign
    {
        char16_t self;
        char16_t first;
        char16_t last;

        bool fits(char16_t code) const { return code == self || (code >= first && code <= last); }
    };

    void add(char16_t code);
    void beginLast();

    std::vector<Sign> signs_;
};

/// Whether the word stands in the text as a whole: no letter, digit or hyphen beside it. Letter case does not count.
bool hasWord(const QString &text, const QString &word);

/// The searchable texts of many rows.
class SearchTexts
{
public:
    void clear();
    void add(QStringView text); ///< one more text of the row that is being added
    void endRow();
    int rows() const { return int(ends_.size()); }

    /// The rows with a text that fits, in their order. Where none does the last syllable counts as begun; nothing typed fits
    /// no row.
    std::vector<int> find(const QString &typed) const;

private:
    std::vector<int> find(const SearchPattern &pattern) const;

    QString texts_;               ///< all, one behind the other
    std::vector<qsizetype> ends_; ///< of the rows
};

} // namespace runtime
