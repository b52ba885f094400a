#include "desk/sample/Clinic.h"

#include "desk/files/NewFile.h"
#include "desk/sample/TradeWriter.h"
#include "desk/schema/Schema.h"
#include "platform/ado/ShownAddress.h"
#include "platform/ado/Transaction.h"
#include "platform/runtime/RuntimeError.h"

namespace sample {

namespace {

const QString FilePrefix = QStringLiteral("sqlite:");

void makeFile(const QString &file, Size size, const Progress &progress)
{
    files::NewFile made(file, files::NewFile::AsUsual);
    {
        const ado::ConnectionPtr connection = ado::Connection::open(FilePrefix + made.unfinished());
        // Nobody relies on the file before it has its name, so nothing needs to be undone in it.
        connection->Execute(QStringLiteral("PRAGMA journal_mode = OFF"));
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
    if (schema::hasSchema(connection))
        throw runtime::RuntimeError(runtime::ErrorNumber::Database,
                                    QStringLiteral("이미 테이블이 있는 데이터베이스라 만들지 않았습니다: ")
                                        + ado::addressToShow(connection.address()));
    schema::NewTables made(connection);
    ado::Transaction scope(connection);
    schema::createTables(connection);
    if (size != Size::Empty)
        writeRows(connection, size, progress);
    schema::createIndexes(connection);
    schema::continueKeys(connection);
    schema::createJournal(connection);
    scope.commit();
    made.keep();
}

} // namespace sample
