#include "tests/automation/component/Till.h"

#include "platform/automation/ClassServer.h"
#include "platform/runtime/RuntimeError.h"

QString Till::Describe(const QString &name, qint16 count, bool sold) const
{
    return QStringLiteral("%1/%2/%3").arg(name).arg(count).arg(sold ? QStringLiteral("판매") : QStringLiteral("보관"));
}

void Till::Exchange(QString &left, qint32 &right)
{
    const QString old = left;
    left = QString::number(right);
    right = old.toInt();
}

QString Till::Replace(ado::ConnectionPtr &connection, const QString &address)
{
    const QString before = connection ? connection->address() : QString();
    connection = ado::Connection::open(address, true);
    return before;
}

void Till::Open()
{
    auto *window = new TillWindow;
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->show();
}

namespace {

QObject *refuse()
{
    throw runtime::RuntimeError(runtime::ErrorNumber::ConnectionLost, QStringLiteral("연결이 없습니다."));
}

automation::ClassServer &classServer()
{
    static automation::ClassServer server(QStringLiteral("test_component"),
                                          {{QStringLiteral("testShop.Till"), []() -> QObject * { return new Till; }},
                                           {QStringLiteral("testShop.Broken"), refuse}});
    return server;
}

} // namespace

ZELVO_CLASS_SERVER(classServer)
