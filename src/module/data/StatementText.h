#pragma once

#include "platform/runtime/Currency.h"

#include <QString>
#include <QStringView>
#include <QVariant>

#include <initializer_list>

/// Statements are plain text with named places, "[CUSTPK]" or "<OrdM_PK>", that values are written into.
namespace statement {

struct Replacement
{
    QStringView place;
    QString value;
};

/// Replaces every occurrence of each place, in the order given. Nothing checks that a place exists, and a value that
/// itself holds a later place is replaced there too.
QString fill(QStringView text, std::initializer_list<Replacement> replacements);

QString number(qint32 value);
/// No grouping, no currency sign; a fraction only where one exists.
QString amount(runtime::Currency value);
/// "2026-11-24".
QString date(const QVariant &value);
/// "'2026-11-24'", for places that stand without quotes.
QString quotedDate(const QVariant &value);

} // namespace statement
