#pragma once

#include <QList>
#include <QStringList>

/// The rows of a data file below tests/, each of that many cells: "ado/like.cases". Cells stand between tabs, those that
/// are missing at the end are empty; "␤" is a line end, "␣" a blank that does not part words. Empty lines and those that
/// begin with "#" are no rows. Raises std::runtime_error where there is no row, or one of more cells.
QList<QStringList> casesOf(const char *file, int cells);
