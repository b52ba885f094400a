#include "tests/components/component/TestReports.h"

#include "platform/automation/ClassServer.h"
#include "platform/runtime/RuntimeError.h"

#include <QApplication>
#include <QLabel>

#include <stdexcept>

QVariant Report::StatStart(ado::ConnectionPtr &connection)
{
    qApp->setProperty("starts", qApp->property("starts").toInt() + 1);
    const QString behaviour = qApp->property("behaviour").toString();
    if (behaviour == QStringLiteral("runtime error"))
        throw runtime::RuntimeError(runtime::ErrorNumber::Database, QStringLiteral("읽지 못함"));
    if (behaviour == QStringLiteral("foreign error"))
        throw std::runtime_error("out of luck");
    if (behaviour == QStringLiteral("number thrown"))
        throw 7;
    if (behaviour == QStringLiteral("no handle"))
        return 0;
    if (behaviour == QStringLiteral("nothing"))
        return {};
    if (behaviour == QStringLiteral("text"))
        return QStringLiteral("창");
    if (behaviour == QStringLiteral("no such window"))
        return 2'000'000'000;
    if (behaviour == QStringLiteral("window of the caller"))
        return qApp->property("caller");
    if (behaviour == QStringLiteral("runs events"))
        QMetaObject::invokeMethod(qApp->property("clicker").value<QObject *>(), "click");
    if (behaviour == QStringLiteral("takes the connection"))
        connection.reset();
    auto *window = new QLabel(behaviour == QStringLiteral("tells its connection") ? connection->address() : behaviour);
    window->setObjectName(QStringLiteral("report"));
    return qlonglong(window->winId());
}

namespace {

automation::ClassServer &classServer()
{
    const auto create = []() -> QObject * {
        const bool lacking = qApp->property("behaviour").toString() == QStringLiteral("no method");
        return lacking ? static_cast<QObject *>(new ReportWithoutStart) : new Report;
    };
    static automation::ClassServer server(QStringLiteral("test_reports"),
                                          {{QStringLiteral("VantoSalesPeriod.clsVantoSalesPeriod"), create},
                                           {QStringLiteral("VantoSalesItem.clsVantoSalesItem"), create}});
    return server;
}

} // namespace

ZELVO_CLASS_SERVER(classServer)
