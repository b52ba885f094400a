#pragma once

#include "platform/ado/Connection.h"

#include <QObject>
#include <QVariant>

/// A statistic component that behaves as the program's property "behaviour" says, well or badly; the property "starts"
/// counts its starts.
class Report : public QObject
{
    Q_OBJECT
public:
    Q_INVOKABLE QVariant StatStart(ado::ConnectionPtr &connection);
};

/// One that cannot be started at all.
class ReportWithoutStart : public QObject
{
    Q_OBJECT
public:
    Q_INVOKABLE int StatBegin(ado::ConnectionPtr &) { return 1; }
};
