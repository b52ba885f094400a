#include "data/RestoreMark.h"

#include "platform/runtime/RuntimeError.h"

#include <optional>

using runtime::RuntimeError;

namespace {

struct Remembered
{
    std::weak_ptr<ado::Connection> connection;
    QString generation;
    std::function<void()> another;
};
std::optional<Remembered> remembered; // of one connection, as gcnnMasterDB is one

/// As text, whatever the engine gives.
const QString selectGeneration = QStringLiteral("SELECT CAST(DS_Generation AS varchar(20)) FROM t_DeskSchema");

/// Empty when there is none.
QString generationOf(const ado::Connection &connection)
{
    const ado::CellTable mark = connection.read(selectGeneration);
    if (mark.rowCount() == 0 || mark.cell(0, 0).kind != ado::CellTable::Kind::Text)
        return {};
    return QString::fromUtf8(mark.text(mark.cell(0, 0)));
}

bool isWatched(const ado::Connection &connection)
{
    return remembered && remembered->connection.lock().get() == &connection;
}

} // namespace

void restoreMark::tell(ado::Foresight &next)
{
    next.read(selectGeneration);
}

void restoreMark::remember(const ado::ConnectionPtr &connection, std::function<void()> another)
{
    remembered.reset();
    if (!connection)
        return;
    try {
        const QString generation = generationOf(*connection);
        if (!generation.isEmpty())
            remembered = {connection, generation, std::move(another)};
    } catch (const RuntimeError &) {
        // A clinic's own database, or one of an earlier version. A lost server is told by what is read next.
    }
}

QString restoreMark::unchangedCondition(const ado::Connection &connection)
{
    if (!isWatched(connection))
        return {};
    return QStringLiteral(" AND EXISTS (SELECT 1 FROM t_DeskSchema WHERE DS_Generation = %1)")
        .arg(remembered->generation);
}

void restoreMark::require(const ado::Connection &connection)
{
    if (!isWatched(connection) || generationOf(connection) == remembered->generation)
        return;
    remembered->another();
    throw RuntimeError(runtime::ErrorNumber::Conflict,
                       QStringLiteral("데이터베이스가 백업으로 복원되었습니다. 아무것도 저장하지 않았습니다.\n"
                                      "열린 창을 닫고 내용을 확인한 뒤 다시 입력하십시오."));
}
