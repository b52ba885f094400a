#include "desk/chain/ChainReport.h"

#include "platform/ado/Foresight.h"
#include "platform/automation/Automation.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/RuntimeError.h"

#include <QWidget>

namespace chain {

namespace {

const QString countFunctions =
    QStringLiteral("SELECT COUNT(*) FROM pg_catalog.pg_proc p JOIN pg_catalog.pg_namespace n ON n.oid = p.pronamespace "
                   "WHERE n.nspname = 'chain' AND p.proname IN ('trade', 'stock') AND has_schema_privilege(n.oid, "
                   "'USAGE') AND has_function_privilege(p.oid, 'EXECUTE')");

} // namespace

void foreseeClinics(ado::Foresight &next)
{
    next.read(countFunctions);
}

bool seesClinics(const ado::ConnectionPtr &connection)
{
    if (connection->engine() == ado::Engine::SQLite || connection->engine() == ado::Engine::MariaDB)
        return false;
    int found = 0;
    runtime::Attempt attempt; // without an answer there is no button
    attempt([&] { found = connection->read(countFunctions).raw(0, 0).toInt(); });
    return found == 2;
}

QWidget *openReport(const ado::ConnectionPtr &connection)
{
    QVariantList arguments{QVariant::fromValue(connection)};
    const automation::ObjectPtr report = automation::createObject(QStringLiteral("VantoChain.clsVantoChain"));
    const int handle = automation::call(*report, QStringLiteral("StatStart"), arguments).toInt();
    QWidget *window = QWidget::find(WId(handle));
    if (!window)
        throw runtime::RuntimeError(runtime::ErrorNumber::InvalidCall,
                                    QStringLiteral("체인 통계를 열지 못했습니다. 개발사로 문의하십시오."));
    window->setAttribute(Qt::WA_DeleteOnClose);
    return window;
}

} // namespace chain
