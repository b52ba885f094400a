#pragma once

#include <QObject>
#include <QString>

namespace ado {
class Foresight;
}

/// The shop's own data and switches, shared by all desks of the clinic: rows of tPSProperties on gcnnMasterDB. Quirk
/// (docs/architecture.md): errors are told to nobody, a failed read is an empty text, a failed write is lost. A clinic's own
/// table may have the two columns alone, without a key.
class clsProperties : public QObject
{
    Q_OBJECT
public:
    Q_INVOKABLE explicit clsProperties(QObject *parent = nullptr);

    /// Value of the key; an unknown key is made, with an empty value.
    Q_INVOKABLE QString PropValue(const QString &strKey) const;
    /// What that reads.
    static void tell(ado::Foresight &next, const QString &strKey);
    /// Writes a value. Quirk (docs/architecture.md): a new row is cut to 20 characters of key and 250 of value, a row that
    /// exists takes the value whole.
    Q_INVOKABLE void PropValue(const QString &strKey, const QString &strValue);
};
