#pragma once

#include <QString>
#include <QVariant>

/// What the codes of a ledger row mean in Korean; a code that is none stays as it is.
namespace ledger {

QString kindText(const QVariant &stored);
/// Of NULL and of an empty method the empty text.
QString methodText(const QVariant &stored);

} // namespace ledger
