#pragma once

#include "desk/window/Patient.h"
#include "platform/runtime/SearchText.h"

namespace desk {

/// What a patient is found by, prepared once so that every key stroke only compares.
class SearchKey
{
public:
    explicit SearchKey(const Patient &patient);

    /// Whether the patient fits what was typed: a part of the name or its first consonants, of the chart number, or the
    /// digits of a telephone number. Blanks and hyphens do not count; an empty text fits everybody.
    bool matches(const runtime::SearchPattern &typed) const;

private:
    QString words_; ///< name, chart number
    QString telephones_;
};

} // namespace desk
