#include "desk/chain/CentralServer.h"

#include "desk/chain/Libraries.h"
#include "desk/preferences/Preferences.h"
#include "platform/ado/Transaction.h"
#include "platform/automation/Automation.h"
#include "platform/runtime/Attempt.h"

#include <utility>

namespace chain {

namespace {

const QString callSign = QStringLiteral("prjZelvoCentral.clsZelvoCentral");

QVariant ask(const QString &member, const ado::ConnectionPtr &connection, const QVariantList &more = {})
{
    if (static bool entered = false; !std::exchange(entered, true))
        libraries::enter({"prjZelvoCentral"});
    QVariantList arguments = QVariantList{QVariant::fromValue(connection)} + more;
    return automation::call(*automation::createObject(callSign), member, arguments);
}

} // namespace

void attend(const ado::ConnectionPtr &clinic)
{
    runtime::Attempt attempt; // the module tells of a server that cannot be had
    attempt([&] {
        if (preferences::value(preferences::callSign, clinic) == callSign)
            ask(QStringLiteral("UseClinic"), clinic);
    });
}

QString link(const ado::ConnectionPtr &clinic, const QString &address)
{
    const QString told = ask(QStringLiteral("LinkClinic"), clinic, {address}).toString();
    ado::Transaction scope(*clinic); // a desk finds both or none
    preferences::setValue(preferences::headOffice, address, clinic);
    preferences::setValue(preferences::callSign, callSign, clinic);
    scope.commit();
    return told;
}

QString makeHeadOffice(const ado::ConnectionPtr &connection)
{
    return ask(QStringLiteral("MakeHeadOffice"), connection).toString();
}

} // namespace chain
