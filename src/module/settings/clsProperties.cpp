#include "settings/clsProperties.h"

#include "platform/ado/Foresight.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Log.h"
#include "platform/runtime/Operation.h"
#include "platform/runtime/RuntimeError.h"
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

/// For rows that nothing tells apart, as two desks make them that read a new key at the same moment.
QString updateStatement(const QString &key, QString value)
{
    return QStringLiteral("UPDATE tPSProperties SET tpsps_Value = '[KEYVALUE]' WHERE tpsps_Key = '[KEYNAME]'")
        .replace(QLatin1String("[KEYNAME]"), key)
        .replace(QLatin1String("[KEYVALUE]"), value.replace(u'\'', QLatin1String("''")));
}

void write(ado::Recordset &row, const QString &key, const QString &value)
{
    row.setValue(valueField, value);
    try {
        row.Update();
    } catch (const runtime::RuntimeError &error) {
        if (error.number() != runtime::ErrorNumber::InvalidCall)
            throw;
        runtime::trapped();
        gcnnMasterDB->Execute(updateStatement(key, value));
    }
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
        row.Open(selectStatement(strKey), gcnnMasterDB, ado::CursorType::Static, ado::LockType::ReadOnly);
        if (row.hasCurrent())
            value = runtime::text(row[valueField]);
        else
            gcnnMasterDB->Execute(insertStatement(strKey, QString()));
    });
    return value;
}

void clsProperties::tell(ado::Foresight &next, const QString &strKey)
{
    next.open(selectStatement(strKey), ado::CursorType::Static);
}

void clsProperties::PropValue(const QString &strKey, const QString &strValue)
{
    const runtime::Operation operation("save property");
    if (!gcnnMasterDB)
        return;
    ado::Recordset row;
    runtime::Attempt attempt;
    attempt([&] {
        row.Open(selectStatement(strKey), gcnnMasterDB, ado::CursorType::Keyset, ado::LockType::Optimistic);
        if (row.hasCurrent())
            write(row, strKey, strValue);
        else
            gcnnMasterDB->Execute(insertStatement(strKey.left(longestKey), strValue.left(longestValue)));
    });
}
