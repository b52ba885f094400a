#pragma once

#include <QString>

/// The folder of the running program, ending in exactly one separator. Layout files and the logo lie there.
QString programFolder();
