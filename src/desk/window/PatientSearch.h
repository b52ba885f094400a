#pragma once

#include "desk/window/Patient.h"

#include <QString>

namespace desk {

/// The first consonants of a Hangul text, "김영희" gives "ㄱㅇㅎ"; other characters stand as they are.
QString initialConsonants(const QString &text);

/// What a patient is found by, prepared once so that every key stroke only compares.
class SearchKey
{
public:
    explicit SearchKey(const Patient &patient);

    /// Whether the patient fits what was typed: a part of the name or its first consonants, of the chart number, or the
    /// digits of a telephone number. Blanks and hyphens do not count; an empty text fits everybody.
    bool matches(const QString &typed) const;

private:
    QString words_; ///< name, its consonants, chart number
    QString telephones_;
};

} // namespace desk
