#include "host/walk/Walk.h"

#include "host/desk/DeskWindow.h"
#include "host/sample/Clinic.h"
#include "host/walk/Actor.h"
#include "host/walk/Receipts.h"
#include "host/walk/Reports.h"
#include "host/walk/Road.h"
#include "platform/registry/AppSettings.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>

namespace walk {

namespace {

const QString ChartNumber = QStringLiteral("000007");

QString freshClinic(const QString &folder)
{
    if (!QDir().mkpath(folder))
        throw Astray(QStringLiteral("폴더를 만들 수 없습니다: ") + folder);
    const QString file = QDir(folder).filePath(QStringLiteral("walk.db"));
    for (const char *suffix : {"", "-wal", "-shm"})
        QFile::remove(file + QLatin1String(suffix));
    const QString address = QStringLiteral("sqlite:") + file;
    sample::makeClinic(address, sample::Size::Small);
    return address;
}

void walkFromDesk(Actor &actor, desk::DeskWindow &window)
{
    window.show();
    actor.say(QStringLiteral("접수 데스크를 엽니다."));
    actor.picture(QStringLiteral("desk"), &window);
    actor.typeInto(actor.control(&window, QStringLiteral("txtSearch")), ChartNumber);
    actor.say(QStringLiteral("챠트번호 %1으로 환자를 찾습니다.").arg(ChartNumber));
    actor.picture(QStringLiteral("patient-found"), &window);
    actor.say(QStringLiteral("'물품판매'를 누릅니다."));
    actor.click(actor.control(&window, QStringLiteral("cmdSale")));
    sellInWindow(actor, actor.window(QStringLiteral("frmMain")));
}

} // namespace

int walkTheRoad(const QString &folder)
{
    // Without its components the desk would stop at a message box that nobody is there to answer.
    automation::createObject(desk::SaleComponent::ProgramId);
    needReports();
    try {
        const ado::ConnectionPtr connection = ado::Connection::open(freshClinic(folder));
        Actor actor(folder);
        const QTemporaryDir settings; // a trial run leaves the user's own window where it was
        registry::setStoreFolder(settings.path());
        printRollToFile(folder);
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs); // the desktop's own cannot be walked through
        desk::DeskWindow window(connection);
        walkFromDesk(actor, window);
        actor.say(QStringLiteral("끝났습니다. 그림과 walk.db는 %1에 있습니다.").arg(QDir(folder).absolutePath()));
        return 0;
    } catch (const Astray &error) {
        QTextStream(stderr) << QStringLiteral("desk: 판매 과정을 끝까지 가지 못했습니다: ") << QString::fromUtf8(error.what()) << Qt::endl;
        return 1;
    }
}

} // namespace walk
