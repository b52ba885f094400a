#include "trials/load/Sessions.h"

#include "platform/ado/CellTable.h"

#include <QFile>

namespace trial {

Sessions Sessions::of(ado::Connection &clinic)
{
    Sessions sum;
    if (clinic.engine() != ado::Engine::PostgreSQL)
        return sum;
    constexpr double kilobytes = 1024;
    const ado::CellTable processes =
        clinic.read(QStringLiteral("SELECT pid FROM pg_stat_activity WHERE datname = current_database() AND pid <> "
                                   "pg_backend_pid() AND backend_type = 'client backend'"));
    for (int row = 0; row < processes.rowCount(); ++row) {
        QFile file(QStringLiteral("/proc/%1/smaps_rollup").arg(processes.raw(row, 0).toString()));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        ++sum.count;
        double whole = 0, own = 0;
        for (const QByteArray &line : file.readAll().split('\n')) {
            const double size = line.mid(line.indexOf(':') + 1).trimmed().split(' ').first().toDouble() / kilobytes;
            if (line.startsWith("Pss:"))
                whole += size;
            else if (line.startsWith("Private_"))
                own += size;
        }
        sum.own += own;
        sum.shared += whole - own;
    }
    if (sum.count > 0) {
        sum.own /= sum.count;
        sum.shared /= sum.count;
    }
    return sum;
}

} // namespace trial
