#include "tests/support/Cases.h"

#include <QFile>

#include <stdexcept>

QList<QStringList> casesOf(const char *file, int cells)
{
    QFile stored(QStringLiteral(TESTS_FOLDER "/") + QString::fromLatin1(file));
    if (!stored.open(QIODevice::ReadOnly))
        throw std::runtime_error("cannot read " + stored.fileName().toStdString());
    QList<QStringList> rows;
    for (const QString &line : QString::fromUtf8(stored.readAll()).split(u'\n')) {
        if (line.isEmpty() || line.startsWith(u'#'))
            continue;
        QStringList row = QString(line).replace(u'␤', u'\n').replace(u'␣', QChar::Nbsp).split(u'\t');
        if (row.size() > cells)
            throw std::runtime_error("too many cells: " + line.toStdString());
        row.resize(cells);
        rows << row;
    }
    if (rows.isEmpty())
        throw std::runtime_error("no rows in " + stored.fileName().toStdString());
    return rows;
}
