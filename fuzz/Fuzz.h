#pragma once

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

/// One target a program: the fuzzer calls fuzz() with bytes of its own making, over and over.
void fuzz(const QByteArray &bytes);

/// Ends the run, with the input kept as a file, when something does not hold.
inline void demand(bool holds, const char *what)
{
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

/// The bytes up to the sign, which are taken off the front together with it.
inline QString takeText(QByteArray &bytes, char until = '\n')
{
    const qsizetype end = bytes.indexOf(until);
    const QByteArray part = end < 0 ? bytes : bytes.left(end);
    bytes = end < 0 ? QByteArray() : bytes.mid(end + 1);
    return QString::fromUtf8(part);
}
