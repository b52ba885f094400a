#pragma once

#include "clinic/Catalogue.h"
#include "platform/ado/Foresight.h"

#include <QStringList>

#include <vector>

namespace clinic {

/// One thing in which a database is not as a sale wants it.
struct Finding
{
    enum class Weight {
        Fault, ///< selling would fail or lose something
        Hint,  ///< it works, slower or with less
    };
    enum class Kind { NoTable, NoColumn, Other, LateCounter, NoIndex, NoLike };

    Weight weight;
    Kind kind;
    QString what; ///< in Korean, with the name of what it is about at the end
};

enum class Depth {
    ToSell, ///< what a sale would fail at: a few short readings
    Whole,
};

/// Looks at the catalogue of a database and writes nothing. Tables and columns that nobody told a clinic's own installer of
/// are not asked for.
std::vector<Finding> examine(ado::Connection &connection, Depth depth);
/// The same where `next` tells what is read behind it. The connection is that one's.
std::vector<Finding> examine(ado::Connection &connection, Depth depth, ado::Foresight &next);
/// What it asks behind the catalogue of a database that is as ours are made.
void foreseeExamination(ado::Foresight &next, const ado::Connection &connection);
/// The same where the catalogue's tables, all of them, were read already.
std::vector<Finding> examine(ado::Connection &connection, Depth depth, const Catalogue &catalogue);

QStringList textsOf(const std::vector<Finding> &findings, Finding::Weight weight);

} // namespace clinic
