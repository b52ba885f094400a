#include "data/RestoreMark.h"

#include "data/StatementText.h"
#include "platform/runtime/RuntimeError.h"

#include <optional>

namespace {

struct Remembered
{
    std::weak_ptr<ado::Connection> connection;
    qint32 generation = 0;
};
std::optional<Remembered> remembered; // of one connection, as gcnnMasterDB is one

std::optional<qint32> generationOf(const ado::Connection &connection)
{
    const ado::CellTable mark = connection.read(QStringLiteral("SELECT DS_Generation FROM t_DeskSchema"));
    if (mark.rowCount() == 0 || mark.cell(0, 0).kind != ado::CellTable::Kind::Integer)
        return {};
    return static_cast<qint32>(mark.cell(0, 0).integer);
}

bool isWatched(const ado::Connection &connection)
{
    return remembered && remembered->connection.lock().get() == &connection;
}

} // namespace

void restoreMark::remember(const ado::ConnectionPtr &connection)
{
    remembered.reset();
    if (!connection || connection->inTransaction())
        return;
    try {
        if (const std::optional<qint32> generation = generationOf(*connection))
            remembered = {connection, *generation};
    } catch (const runtime::RuntimeError &) {
        // A clinic's own database, or one of an earlier version. A lost server is told by what is read next.
    }
}

bool restoreMark::isAnother(ado::Connection &connection)
{
    return isWatched(connection) && generationOf(connection) != remembered->generation;
}

QString restoreMark::unchangedCondition(const ado::Connection &connection)
{
    if (!isWatched(connection))
        return {};
    return QStringLiteral(" AND EXISTS (SELECT 1 FROM t_DeskSchema WHERE DS_Generation = %1)")
        .arg(statement::number(remembered->generation));
}
