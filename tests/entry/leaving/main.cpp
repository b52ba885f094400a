#include "platform/ado/Recordset.h"
#include "platform/automation/Automation.h"
#include "platform/controls/EventEdge.h"
#include "platform/registry/AppSettings.h"
#include "platform/runtime/Log.h"
#include "platform/runtime/RuntimeError.h"

#include <QApplication>
#include <QDate>
#include <QLabel>
#include <QTextStream>
#include <QTimer>

#include <cstdlib>
#include <memory>
#include <stdexcept>

namespace {

struct Desk
{
    ado::ConnectionPtr connection;
    automation::ObjectPtr sale;
    std::shared_ptr<ado::Recordset> list = {};
};

/// Goes after main, the toolkit and whatever the libraries hold.
Desk lastDesk;

Desk openSale(const QStringList &words)
{
    automation::classRegister::setFile(words.at(3) + QStringLiteral("/classes.ini"));
    registry::setStoreFolder(words.at(3));
    automation::classRegister::registerLibrary(QCoreApplication::applicationDirPath()
                                               + QStringLiteral("/prjZelvoProductSale"));
    Desk desk{ado::Connection::open(words.at(2)),
              automation::createObject(QStringLiteral("prjZelvoProductSale.clsZelvoProductSale"))};
    QVariantList patient{QVariant::fromValue(desk.connection),
                         7,
                         QStringLiteral("남궁보람"),
                         QString(),
                         true,
                         QDate(1980, 5, 7),
                         QString(),
                         QString(),
                         QString(),
                         QString()};
    automation::call(*desk.sale, words.at(4), patient);
    return desk;
}

/// In the middle of a saving, with a list open.
void keepToTheLast(const Desk &desk)
{
    lastDesk = desk;
    lastDesk.list = std::make_shared<ado::Recordset>();
    lastDesk.list->Open(QStringLiteral("SELECT * FROM t_HospSetup"), desk.connection, ado::CursorType::Keyset,
                        ado::LockType::Optimistic);
    desk.connection->BeginTrans();
    desk.connection->Execute(QStringLiteral("INSERT INTO t_HospSetup (HS_KEY) VALUES ('unsaved')"));
}

int leave(const QString &way, QApplication &application, Desk &desk)
{
    QCoreApplication::processEvents();
    if (way == QLatin1String("return"))
        return 0;
    if (way == QLatin1String("object first"))
        desk.sale.reset();
    if (way == QLatin1String("connection first"))
        desk.connection.reset();
    if (way.startsWith(QLatin1String("global")))
        keepToTheLast(desk);
    if (way == QLatin1String("global, an error"))
        throw std::runtime_error("the host's own");
    QTimer::singleShot(0, &application, [&application, way] {
        if (way.endsWith(QLatin1String("exit")))
            std::exit(0);
        if (way == QLatin1String("loop ends"))
            application.exit(0);
        else
            QApplication::quit();
    });
    return application.exec();
}

/// A slot that was connected plainly raises an error, and whoever reads the box confirms it.
int raiseInPlainSlot(int argc, char **argv)
{
    const QApplication application(argc, argv);
    runtime::sayErrors();
    controls::tellStrayErrors();
    QTimer reader;
    QObject::connect(&reader, &QTimer::timeout, [] {
        QWidget *const box = QApplication::activeModalWidget();
        if (!box)
            return;
        for (const QLabel *label : box->findChildren<QLabel *>())
            QTextStream(stderr) << label->text() << Qt::endl;
        box->close();
    });
    reader.start(50);
    QTimer::singleShot(
        0, [] { throw runtime::RuntimeError(runtime::ErrorNumber::Database, QStringLiteral("가져오지 못했습니다.")); });
    return QApplication::exec();
}

} // namespace

/// WAY ADDRESS FOLDER ENTRY: opens the sale and ends in that way; the folder holds class register and settings. With one
/// word alone an error ends it.
int main(int argc, char **argv)
{
    if (argc == 2)
        return raiseInPlainSlot(argc, argv);
    try {
        QApplication application(argc, argv);
        const QStringList words = QApplication::arguments();
        Desk desk = openSale(words);
        return leave(words.at(1), application, desk);
    } catch (const runtime::RuntimeError &error) {
        QTextStream(stderr) << error.description() << Qt::endl;
        return 1;
    } catch (const std::runtime_error &) {
        return 0;
    }
}
