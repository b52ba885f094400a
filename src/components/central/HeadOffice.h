#pragma once

#include "components/central/Offer.h"
#include "platform/runtime/RuntimeError.h"

namespace central {

/// The head office cannot be reached, or does not answer.
class Unreachable : public runtime::RuntimeError
{
public:
    explicit Unreachable(const runtime::RuntimeError &why)
        : RuntimeError(why)
    {
    }
};

/// The head office's database, as a clinic sees it.
class HeadOffice
{
public:
    /// `meanwhile` runs now and then while a server is waited for.
    HeadOffice(QString address, std::function<void()> meanwhile);

    /// How far its list has come. Raises Unreachable when that cannot be told within five seconds.
    ListMark mark() const;
    /// Raises Unreachable when nothing more comes for five seconds.
    Offer offer(const ListMark &since, const Progress &progress) const;

private:
    enum class Patience {
        InAll,      ///< for everything
        WhileComing ///< for the next sign of life
    };
    std::vector<QStringList> rows(const QString &statement, Patience how, const Progress &progress) const;
    std::vector<QStringList> fromServer(const QString &statement, Patience how, const Progress &progress) const;

    QString address_;
    std::function<void()> meanwhile_;
};

} // namespace central
