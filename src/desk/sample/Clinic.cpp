#include "desk/sample/Clinic.h"

#include "desk/files/NewFile.h"
#include "desk/sample/TradeWriter.h"
#include "desk/schema/Address.h"
#include "desk/schema/Schema.h"
#include "platform/runtime/RuntimeError.h"

#include <QSqlError>
#include <QSqlQuery>

namespace sample {

namespace {

const QString FilePrefix = QStringLiteral("sqlite:");

void makeFile(const QString &file, Size size, const Progress &progress)
{
    files::NewFile made(file, files::NewFile::AsUsual);
    {
        const ado::ConnectionPtr connection = ado::Connection::open(FilePrefix + made.unfinished());
        // Nobody relies on the file before it has its name, so nothing needs to be undone in it.
        QSqlQuery(connection->database()).exec(QStringLiteral("PRAGMA journal_mode = OFF"));
        fill(*connection, size, progress);
    }
    made.finish();
}

} // namespace

void makeClinic(const QString &address, Size size, const Progress &progress)
{
    if (!address.startsWith(FilePrefix)) {
        fill(*ado::Connection::open(address), size, progress);
        return;
    }
    makeFile(address.mid(FilePrefix.size()), size, progress);
}

void fill(ado::Connection &connection, Size size, const Progress &progress)
{
    QSqlDatabase database = connection.database();
    const auto refuse = [&] {
        throw runtime::RuntimeError(runtime::ErrorNumber::Database,
                                    QStringLiteral("데이터베이스를 만들지 못했습니다.\n")
                                        + database.lastError().text());
    };
    if (schema::hasSchema(connection))
        throw runtime::RuntimeError(runtime::ErrorNumber::Database,
                                    QStringLiteral("이미 테이블이 있는 데이터베이스라 만들지 않았습니다: ")
                                        + schema::addressToShow(connection.address()));
    if (!database.transaction())
        refuse();
    try {
        schema::createTables(connection);
        if (size != Size::Empty)
            writeRows(database, size, progress);
        schema::createIndexes(connection);
        schema::continueKeys(connection);
    } catch (...) {
        database.rollback();
        throw;
    }
    if (!database.commit())
        refuse();
}

} // namespace sample
