#pragma once

#include "platform/ado/CellTable.h"
#include "platform/runtime/Currency.h"

namespace ado {

/// The value of a cell that is not NULL in the type of its column; raises TypeMismatch or Overflow.
QVariant typedValue(const CellTable &table, const CellTable::Cell &cell, ColumnType type);

/// A row's key; one that the registry does not know is a whole number.
QVariant keyValue(const CellTable &table, int row, int column);

/// Exact for whole numbers and decimal texts; more than four decimals round half to even.
runtime::Currency moneyOf(const CellTable &table, const CellTable::Cell &cell);

/// An assigned value in the type of its column, NULL for an invalid one; raises TypeMismatch or Overflow.
QVariant assigned(const QVariant &value, ColumnType type);

/// An assigned value as it goes to the server: invalid, qlonglong, double or QString (dates and money as plain text, but
/// whole won as a number).
QVariant parameter(const QVariant &value);

} // namespace ado
