#include "tests/support/Statements.h"

#include <QFile>
#include <QRegularExpression>

#include <stdexcept>

QString textOf(const char *file)
{
    QFile source(QStringLiteral(TESTS_FOLDER "/") + QLatin1String(file));
    if (!source.open(QIODevice::ReadOnly))
        throw std::runtime_error("cannot read " + source.fileName().toStdString());
    return QString::fromUtf8(source.readAll());
}

QStringList statementsOf(const char *file)
{
    QString text = textOf(file);
    text.remove(QRegularExpression(QStringLiteral("^--.*\n"), QRegularExpression::MultilineOption));
    QStringList statements;
    for (const QString &statement : text.split(QStringLiteral(";\n"), Qt::SkipEmptyParts)) {
        if (!statement.trimmed().isEmpty())
            statements << statement.trimmed();
    }
    return statements;
}

void runFile(TestDatabase &database, const char *file)
{
    for (const QString &statement : statementsOf(file))
        database.run(statement);
}
