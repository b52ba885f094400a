#pragma once

#include "platform/ado/Connection.h"

#include <QObject>

/// The chain's central product server, as the sale module and the desk call it by name.
class clsZelvoCentral : public QObject
{
    Q_OBJECT
public:
    /// Whose products those are; the program's connection, once before the module is called. It is held no longer than the
    /// program holds it.
    Q_INVOKABLE void UseClinic(ado::ConnectionPtr &connection);

    /// 1 in step, 0 out of step, -1 the head office cannot be reached within five seconds.
    Q_INVOKABLE int CheckSync();
    /// Whether the clinic's list was brought into step; it is as it was where not, and the log tells why.
    Q_INVOKABLE bool ResyncFromServer();

    /// For the technician. Both raise RuntimeError, and answer with what was done in Korean.
    /// Brings a clinic's list into step with the head office at that address for the first time, or again.
    Q_INVOKABLE QString LinkClinic(ado::ConnectionPtr &connection, const QString &address);
    /// Makes the product list of this database that of a chain.
    Q_INVOKABLE QString MakeHeadOffice(ado::ConnectionPtr &connection);
};
