#include "desk/window/PatientSearch.h"

namespace desk {

namespace {

constexpr QChar Border = u'\n'; ///< between texts that are searched together; nobody types one

QString searchable(const QString &one, const QString &other)
{
    QString both;
    both.reserve(one.size() + other.size() + 1);
    runtime::appendSearchable(both, one);
    both.append(Border);
    runtime::appendSearchable(both, other);
    return both;
}

} // namespace

SearchKey::SearchKey(const Patient &patient)
    : words_(searchable(patient.name, patient.chartNumber))
    , telephones_(searchable(patient.phone, patient.cell))
{
}

bool SearchKey::matches(const runtime::SearchPattern &typed) const
{
    return typed.indexIn(words_) >= 0 || (typed.isDigits() && typed.indexIn(telephones_) >= 0);
}

} // namespace desk
