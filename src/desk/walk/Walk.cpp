#include "desk/walk/Walk.h"

#include "desk/sample/Clinic.h"
#include "desk/walk/Actor.h"
#include "desk/walk/Reports.h"
#include "desk/walk/Road.h"
#include "desk/walk/Shop.h"
#include "desk/window/DeskWindow.h"
#include "platform/registry/AppSettings.h"
#include "platform/runtime/ProgramFolder.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>

namespace walk {

namespace {

const QString ChartNumber = QStringLiteral("000007");

QString freshClinic(const QString &folder, const QString &name, sample::Size size)
{
    if (!QDir().mkpath(folder))
        throw Astray(QStringLiteral("폴더를 만들 수 없습니다: ") + folder);
    const QString file = QDir(folder).filePath(name);
    for (const char *suffix : {"", "-wal", "-shm"})
        QFile::remove(file + QLatin1String(suffix));
    const QString address = QStringLiteral("sqlite:") + file;
    sample::makeClinic(address, size);
    return address;
}

QWidget *saleWindowFor(Actor &actor, desk::DeskWindow &desk, const QString &chartNumber)
{
    actor.typeInto(actor.control(&desk, QStringLiteral("txtSearch")), chartNumber);
    actor.say(QStringLiteral("챠트번호 %1 환자를 찾습니다.").arg(chartNumber));
    actor.picture(QStringLiteral("patient-found"), &desk);
    actor.say(QStringLiteral("'물품판매'를 누릅니다."));
    actor.click(actor.control(&desk, QStringLiteral("cmdSale")));
    return actor.window(QStringLiteral("frmMain"));
}

/// The desk on a clinic, what is done in the sale window, and both closed.
void atDesk(Actor &actor, const ado::ConnectionPtr &connection, void (*work)(Actor &, QWidget *))
{
    desk::DeskWindow window(connection);
    window.show();
    actor.say(QStringLiteral("접수 데스크를 엽니다."));
    actor.picture(QStringLiteral("desk"), &window);
    QWidget *sale = saleWindowFor(actor, window, ChartNumber);
    work(actor, sale);
    actor.say(QStringLiteral("판매 창을 닫습니다."));
    sale->close();
    settle();
}

void walkBothShops(Actor &actor)
{
    atDesk(actor, ado::Connection::open(freshClinic(actor.folder(), QStringLiteral("walk.db"), sample::Size::Small)),
           sellInWindow);

    actor.say(QStringLiteral("새 지점을 준비합니다."));
    const ado::ConnectionPtr empty =
        ado::Connection::open(freshClinic(actor.folder(), QStringLiteral("new-shop.db"), sample::Size::Empty));
    empty->Execute(
        QStringLiteral("INSERT INTO Customer (Customer_PK, name, sn) VALUES (1, '서문하늘', '%1')").arg(ChartNumber));
    atDesk(actor, empty, openShopInWindow);
}

} // namespace

int walkTheRoad(const QString &folder)
{
    // Without its components the desk would stop at a message box that nobody is there to answer.
    automation::createObject(desk::SaleComponent::ProgramId);
    needReports();
    try {
        Actor actor(folder);
        // A trial run leaves the user's own window, layouts and logo where they were.
        const QTemporaryDir own;
        registry::setStoreFolder(own.path());
        runtime::setProgramFolder(own.path());
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs); // the desktop's own cannot be walked through
        walkBothShops(actor);
        actor.say(QStringLiteral("끝났습니다. 그림과 walk.db는 %1에 있습니다.").arg(QDir(folder).absolutePath()));
        return 0;
    } catch (const Astray &error) {
        QTextStream(stderr) << QStringLiteral("desk: 판매 과정을 끝까지 가지 못했습니다: ")
                            << QString::fromUtf8(error.what()) << Qt::endl;
        return 1;
    }
}

} // namespace walk
