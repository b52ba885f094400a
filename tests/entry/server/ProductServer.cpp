#include "tests/entry/server/ProductServer.h"

#include "platform/ado/Connection.h"
#include "platform/automation/ClassServer.h"
#include "platform/runtime/RuntimeError.h"

#include <QApplication>
#include <QWidget>

namespace {

ServerScript &script()
{
    static ServerScript theScript;
    return theScript;
}

void note(const QString &event)
{
    script().log += (script().log.isEmpty() ? QString() : QStringLiteral(" ")) + event;
}

bool saleWindowIsUp()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    return std::any_of(windows.begin(), windows.end(), [](const QWidget *window) {
        return window->isVisible() && window->objectName() == QLatin1String("frmMain");
    });
}

void failWhenAsked(const QString &member)
{
    note(member);
    if (script().failing == member)
        throw runtime::RuntimeError(runtime::ErrorNumber::ConnectionLost, member + QStringLiteral(" 중에 끊겼습니다."));
}

QObject *createServer()
{
    if (++script().created >= script().refuseFrom)
        throw runtime::RuntimeError(runtime::ErrorNumber::Database, QStringLiteral("만들지 않습니다."));
    return new ProductServer;
}

automation::ClassServer &classServer()
{
    static automation::ClassServer server(
        QStringLiteral("test_product_server"),
        {{QStringLiteral("testCentral.Server"), createServer},
         {QStringLiteral("testCentral.Control"), []() -> QObject * { return new ServerControl; }}});
    return server;
}

} // namespace

ProductServer::ProductServer()
{
    note(QStringLiteral("created"));
}

ProductServer::~ProductServer()
{
    note(saleWindowIsUp() ? QStringLiteral("released-late") : QStringLiteral("released"));
}

QVariant ProductServer::CheckSync()
{
    failWhenAsked(QStringLiteral("CheckSync"));
    return script().sync;
}

bool ProductServer::ResyncFromServer()
{
    failWhenAsked(QStringLiteral("ResyncFromServer"));
    if (!script().statement.isEmpty())
        ado::Connection::open(script().address)->Execute(script().statement);
    return script().resync;
}

void ServerControl::Script(const QVariant &sync, bool resync, const QString &failing, qint32 refuseFrom)
{
    script() = {sync, resync, failing, refuseFrom, 0, {}, {}, {}};
}

void ServerControl::ResyncRuns(const QString &address, const QString &statement)
{
    script().address = address;
    script().statement = statement;
}

QString ServerControl::Log() const
{
    return script().log;
}

ZELVO_CLASS_SERVER(classServer)
