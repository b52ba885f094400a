#include "platform/ado/LentDatabase.h"

#include "platform/runtime/RuntimeError.h"

#include <QSqlDriver>
#include <QVariant>

namespace ado {

LentDatabase::LentDatabase(const QSqlDatabase &database)
    : name_(database.connectionName())
{
}

void *LentDatabase::handle(QLatin1String kind) const
{
    const QSqlDatabase now = database();
    if (!now.isOpen() || now.driverName() != kind)
        return nullptr;
    const QVariant handle = now.driver()->handle(); // holds a pointer, under whatever name the toolkit was built with
    return handle.isValid() ? *static_cast<void *const *>(handle.constData()) : nullptr;
}

QString LentDatabase::address() const
{
    const QSqlDatabase now = database();
    if (now.driverName() == QLatin1String("QSQLITE"))
        return QStringLiteral("sqlite:") + now.databaseName();
    if (now.driverName() == QLatin1String("QODBC"))
        return QStringLiteral("odbc:") + now.databaseName();
    return QStringLiteral("postgresql://%1@/%2?host=%3").arg(now.userName(), now.databaseName(), now.hostName());
}

void LentDatabase::raiseClosed()
{
    throw runtime::RuntimeError(runtime::ErrorNumber::ConnectionLost,
                                QStringLiteral("데이터베이스 연결이 닫혀 있습니다. 저장되지 않았습니다.\n"
                                               "프로그램을 다시 시작하고, 계속되면 개발사로 문의하십시오."));
}

} // namespace ado
