#pragma once

#include <QString>

/// Reads numbers out of what a user typed.
class clsNumberRelated
{
public:
    /// Digits with an optional leading "-", at most 9 characters, "0" when there is no digit. Everything else in the
    /// text is passed over; a "-" counts wherever it stands.
    QString GetPureNumber(const QString &text) const;
};
