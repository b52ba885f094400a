#include "entry/clsZelvoProductSale.h"

#include "data/clsUserSettingDB.h"
#include "entry/ReadyToSell.h"
#include "entry/frmMain.h"
#include "platform/ado/Meanwhile.h"
#include "platform/ado/Waiting.h"
#include "platform/controls/EventEdge.h"
#include "platform/controls/MessageBox.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Log.h"
#include "platform/runtime/Operation.h"
#include "platform/runtime/RuntimeError.h"
#include "session/modGlobalVars.h"

#include <QScopedValueRollback>

#include <memory>
#include <optional>
#include <utility>

namespace {

// What a look at the central product server says.
enum SyncState : int { InStep = 1, OutOfStep = 0, Unreachable = -1, NotCreated = -2 };

Customer customerOf(qint32 lngCustPK, const QString &strName, const QString &strSN, bool bSex, const QDate &dtBirth,
                    const QString &strZipCode, const QString &strAddress, const QString &strPhone,
                    const QString &strCell)
{
    Customer customer{lngCustPK, strName, strSN, bSex, dtBirth, strZipCode, strAddress, strPhone, strCell, QString()};
    // Quirk (docs/architecture.md): the VIP field stays blank, whatever the host gave.
    customer.vip = QStringLiteral("");
    return customer;
}

/// An entry is under way: it may stand in a box before there is a window.
bool entering = false;

void tellAboutServer(const QString &text, const QString &title)
{
    controls::MsgBox(text, controls::InformationIcon, title);
}

} // namespace

clsZelvoProductSale::clsZelvoProductSale(QObject *parent)
    : QObject(parent)
{
}

QVariant clsZelvoProductSale::Foo()
{
    frmMain::instance().show();
    return {};
}

qint16 clsZelvoProductSale::showProductSale(ado::ConnectionPtr &cnnMasterDB, qint32 lngCustPK, const QString &strName,
                                            const QString &strSN, bool bSex, const QDate &dtBirth,
                                            const QString &strZipCode, const QString &strAddress,
                                            const QString &strPhone, const QString &strCell, const QString &)
{
    return enter(&frmMain::showProductSaleForm, cnnMasterDB,
                 customerOf(lngCustPK, strName, strSN, bSex, dtBirth, strZipCode, strAddress, strPhone, strCell));
}

qint16 clsZelvoProductSale::showProductSaleManage(ado::ConnectionPtr &cnnMasterDB, qint32 lngCustPK,
                                                  const QString &strName, const QString &strSN, bool bSex,
                                                  const QDate &dtBirth, const QString &strZipCode,
                                                  const QString &strAddress, const QString &strPhone,
                                                  const QString &strCell, const QString &)
{
    return enter(&frmMain::showProductSaleManageForm, cnnMasterDB,
                 customerOf(lngCustPK, strName, strSN, bSex, dtBirth, strZipCode, strAddress, strPhone, strCell));
}

bool clsZelvoProductSale::openProductServer(const QString &callSign, automation::ObjectPtr &server)
{
    const runtime::Operation operation("open product server");
    try {
        server = automation::createObject(callSign);
        return server != nullptr;
    } catch (const runtime::RuntimeError &) {
        runtime::trapped();
        return false;
    }
}

int clsZelvoProductSale::checkProductServerSync(const QString &callSign)
{
    automation::ObjectPtr server;
    if (!openProductServer(callSign, server))
        return NotCreated;
    const double state = runtime::Val(automation::call(*server, QStringLiteral("CheckSync")));
    return state == int(InStep) ? InStep : state == int(Unreachable) ? Unreachable : OutOfStep;
}

bool clsZelvoProductSale::resyncFromProductServer(const QString &callSign)
{
    automation::ObjectPtr server; // a fresh object, not the one that was asked
    return openProductServer(callSign, server)
           && runtime::isTrue(automation::call(*server, QStringLiteral("ResyncFromServer")));
}

bool clsZelvoProductSale::settleProductServer(const ado::ConnectionPtr &cnnMasterDB)
{
    const QString callSign = clsUserSettingDB().ProductServerCallSign(cnnMasterDB);
    gbProductServerLinked = !callSign.isEmpty();
    if (!gbProductServerLinked)
        return true;

    switch (checkProductServerSync(callSign)) {
    case OutOfStep:
        if (resyncFromProductServer(callSign))
            return true;
        tellAboutServer(QStringLiteral("물품 연동에 실패했습니다. 프로그램을 종료합니다."), QStringLiteral("물품연동"));
        return false;
    case Unreachable:
        // Quirk (docs/architecture.md): the text repeats a word.
        tellAboutServer(QStringLiteral("물품관리서버와의 연결을 실패했습니다. 프로그램을 프로그램을 종료합니다."),
                        QStringLiteral("물품관리서버연결"));
        return false;
    case NotCreated:
        return false; // quirk (docs/architecture.md): without a box
    default:
        return true;
    }
}

/// Outside any event edge, since the product server's errors belong to the host; the scope makes other entries wait for
/// its boxes.
void clsZelvoProductSale::enterNow(FormEntry entry, const ado::ConnectionPtr &cnnMasterDB, const Customer &customer)
{
    const controls::EventScope scope; // what waits is tried again at its end
    const QScopedValueRollback guard(entering, true);
    std::optional<ado::Foresight> next(cnnMasterDB);
    // Told where no product server is likely to change the products first: as the last entry found it.
    if (!gbProductServerLinked) {
        clsUserSettingDB::tellProductServerCallSign(*next);
        frmMain::tellSale(*next, customer.lngCustPK);
    }
    std::unique_ptr<frmMain> window;
    const auto mayEnter = [&] {
        const ado::Meanwhile making([&window] {
            if (!frmMain::existing())
                window = frmMain::made();
        });
        return isReadyToSell(cnnMasterDB, *next) && settleProductServer(cnnMasterDB);
    };
    if (!mayEnter())
        return;
    if (gbProductServerLinked)
        next.reset();
    (frmMain::instance(std::move(window)).*entry)(cnnMasterDB, customer);
}

/// An entry that comes while a box or dialog of ours waits for the user is put off: the work there must end with the
/// customer with whom it began.
qint16 clsZelvoProductSale::enter(FormEntry entry, const ado::ConnectionPtr &cnnMasterDB, const Customer &customer)
{
    const auto busy = [] { return entering || frmMain::isAtWork() || ado::serverIsAwaited(); };
    if (busy() || controls::workWaits())
        controls::runWhenFree(busy, [=] { enterNow(entry, cnnMasterDB, customer); });
    else
        enterNow(entry, cnnMasterDB, customer);
    return 0;
}
