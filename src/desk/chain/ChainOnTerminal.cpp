#include "desk/chain/ChainOnTerminal.h"

#include "desk/chain/CentralServer.h"

#include <QTextStream>

namespace chain {

int linkOnTerminal(const ado::ConnectionPtr &clinic, const QString &address)
{
    QTextStream(stdout) << link(clinic, address) << Qt::endl;
    return 0;
}

int makeHeadOfficeOnTerminal(const ado::ConnectionPtr &connection)
{
    QTextStream(stdout) << makeHeadOffice(connection) << Qt::endl;
    return 0;
}

} // namespace chain
