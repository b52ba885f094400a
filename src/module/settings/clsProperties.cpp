#include "settings/clsProperties.h"

#include "platform/ado/Recordset.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Operation.h"
#include "session/modGlobalVars.h"

namespace {

constexpr qsizetype longestKey = 20;
constexpr qsizetype longestValue = 250;

const QString valueField = QStringLiteral("tpsps_Value");

QString selectStatement(const QString &key)
{
    return QStringLiteral("SELECT tpsps_Key, tpsps_Value FROM tPSProperties WHERE tpsps_Key = '[KEYNAME]'")
        .replace(QLatin1String("[KEYNAME]"), key);
}

// Quotes in a value are not doubled: such a value cannot make a row, only change one.
QString insertStatement(const QString &key, const QString &value)
{
    return QStringLiteral("INSERT INTO tPSProperties (tpsps_Key, tpsps_Value) VALUES ('[KEYNAME]', '[KEYVALUE]')")
        .replace(QLatin1String("[KEYNAME]"), key)
        .replace(QLatin1String("[KEYVALUE]"), value);
}

/// For a table that has no column to know a row by but the key text itself.
QString updateStatement(const QString &key, QString value)
{
    return QStringLiteral("UPDATE tPSProperties SET tpsps_Value = '[KEYVALUE]' WHERE tpsps_Key = '[KEYNAME]'")
        .replace(QLatin1String("[KEYNAME]"), key)
        .replace(QLatin1String("[KEYVALUE]"), value.replace(u'\'', QLatin1String("''")));
}

bool openForChange(ado::Recordset &row, const QString &key)
{
    runtime::Attempt attempt;
    attempt([&] { row.Open(selectStatement(key), gcnnMasterDB, ado::CursorType::Keyset, ado::LockType::Optimistic); });
    return !attempt.failed();
}

void openForReading(ado::Recordset &row, const QString &key)
{
    row.Open(selectStatement(key), gcnnMasterDB, ado::CursorType::Static, ado::LockType::ReadOnly);
}

} // namespace

clsProperties::clsProperties(QObject *parent)
    : QObject(parent)
{
}

QString clsProperties::PropValue(const QString &strKey) const
{
    const runtime::Operation operation("read property");
    QString value;
    if (!gcnnMasterDB)
        return value;
    ado::Recordset row;
    runtime::Attempt attempt;
    attempt([&] {
        openForReading(row, strKey);
        if (row.hasCurrent())
            value = runtime::text(row[valueField]);
        else
            gcnnMasterDB->Execute(insertStatement(strKey, QString()));
    });
    return value;
}

void clsProperties::PropValue(const QString &strKey, const QString &strValue)
{
    const runtime::Operation operation("save property");
    if (!gcnnMasterDB)
        return;
    ado::Recordset row;
    runtime::Attempt attempt;
    attempt([&] {
        const bool known = openForChange(row, strKey);
        if (!known)
            openForReading(row, strKey);
        if (!row.hasCurrent()) {
            gcnnMasterDB->Execute(insertStatement(strKey.left(longestKey), strValue.left(longestValue)));
        } else if (known) {
            row.setValue(valueField, strValue);
            row.Update();
        } else {
            gcnnMasterDB->Execute(updateStatement(strKey, strValue));
        }
    });
}
