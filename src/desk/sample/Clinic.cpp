#include "desk/sample/Clinic.h"

#include "desk/sample/TradeWriter.h"
#include "desk/schema/Schema.h"
#include "desk/schema/WholeFile.h"
#include "platform/ado/ShownAddress.h"
#include "platform/ado/Transaction.h"
#include "platform/runtime/RuntimeError.h"

#include <QFile>

namespace sample {

namespace {

const QString FilePrefix = QStringLiteral("sqlite:");

void makeFile(const QString &file, Size size, const Progress &progress)
{
    const bool made = schema::makeWholeFile(file, [&](const QString &unfinished) {
        const ado::ConnectionPtr connection = ado::Connection::open(FilePrefix + unfinished, true);
        // Nobody relies on the file before it has its name, so nothing needs to be undone in it.
        connection->Execute(QStringLiteral("PRAGMA journal_mode = OFF"));
        fill(*connection, size, progress);
    });
    if (!made)
        throw runtime::RuntimeError(runtime::ErrorNumber::Database,
                                    QStringLiteral("데이터베이스 파일을 만들 수 없습니다: ") + file);
}

} // namespace

void makeClinic(const QString &address, Size size, const Progress &progress)
{
    if (!address.startsWith(FilePrefix)) {
        fill(*ado::Connection::open(address), size, progress);
        return;
    }
    const QString file = address.mid(FilePrefix.size());
    if (QFile::exists(file))
        throw runtime::RuntimeError(runtime::ErrorNumber::Database,
                                    QStringLiteral("이미 있는 파일이라 만들지 않았습니다: ") + file);
    makeFile(file, size, progress);
}

void fill(ado::Connection &connection, Size size, const Progress &progress)
{
    if (schema::hasSchema(connection))
        throw runtime::RuntimeError(runtime::ErrorNumber::Database,
                                    QStringLiteral("이미 테이블이 있는 데이터베이스라 만들지 않았습니다: ")
                                        + ado::addressToShow(connection.address()));
    ado::Transaction scope(connection);
    schema::createTables(connection);
    if (size != Size::Empty)
        writeRows(connection, size, progress);
    schema::createIndexes(connection);
    schema::continueKeys(connection);
    scope.commit();
}

} // namespace sample
