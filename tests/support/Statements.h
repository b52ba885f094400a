#pragma once

#include "tests/support/TestDatabase.h"

#include <QStringList>

/// The text of a file of the tests, "support/printer.ppd".
QString textOf(const char *file);

/// The statements of an SQL file of the tests, "data/clinic.sql". Each ends with a semicolon at the end of its line; lines
/// that begin with "--" are for the reader.
QStringList statementsOf(const char *file);

/// Runs them all.
void runFile(TestDatabase &database, const char *file);
