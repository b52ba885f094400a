#pragma once

#include "platform/ado/Foresight.h"

#include <QString>
#include <QStringView>
#include <QVariant>

#include <span>

/// The settings that all desks of a clinic share: one row per key in the host's table t_HospSetup. A database failure
/// shows a warning and reads as the empty value of the property's type; nothing is raised for it.
class clsUserSettingDB
{
public:
    enum class Kind { Text, Flag };

    struct Property
    {
        const char16_t *name;
        const char16_t *key;
        Kind kind;
        const char16_t *title; ///< of the failure box; null: the key
    };

    /// The shared vocabulary, in its order.
    static std::span<const Property> properties();

    /// The stored value: bool for a flag, QString for a text; false or the empty text where no row is. Reading writes
    /// nothing. `property` is a name of the vocabulary; any other raises NoSuchMember.
    QVariant value(const ado::ConnectionPtr &connection, QStringView property) const;
    /// Makes the row or changes it; an equal value writes nothing.
    void setValue(const ado::ConnectionPtr &connection, QStringView property, const QVariant &value) const;

    /// Program identifier of the central product server; empty: there is none.
    QString ProductServerCallSign(const ado::ConnectionPtr &connection) const;
    /// Tells what that reads.
    static void tellProductServerCallSign(ado::Foresight &next);
    void setProductServerCallSign(const ado::ConnectionPtr &connection, const QString &callSign) const;

private:
    enum class Status { Found, NotFound, Failed };

    static Status readValue(const ado::ConnectionPtr &connection, const QString &key, QString &value);
    static QString readValueWithDefault(const ado::ConnectionPtr &connection, const QString &key,
                                        const QString &defaultText, Status &status);
    static void writeValue(const ado::ConnectionPtr &connection, const QString &key, const QString &value,
                           Status &status);
    static void reportFailure(const QString &title);
};
