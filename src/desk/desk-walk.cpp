#include "clinic/Tables.h"
#include "desk/walk/Walk.h"
#include "desk/window/Component.h"
#include "desk/window/Look.h"

#include <QApplication>
#include <QPalette>
#include <QTextStream>

#include <exception>

/// desk-walk FOLDER: walks the road of one sale by itself and leaves its pictures in the folder.
int main(int argc, char **argv)
{
    QCoreApplication::setApplicationName(QStringLiteral("zelvo-desk"));
    QApplication application(argc, argv);
    const QString folder = application.arguments().value(1);
    if (folder.isEmpty() || folder.startsWith(QLatin1Char('-'))) {
        QTextStream(stderr) << QStringLiteral("desk-walk: 그림을 남길 폴더를 입력하십시오.") << Qt::endl;
        return 2;
    }
    if (qEnvironmentVariableIsSet("ZELVO_WALK_DARK"))
        QApplication::setPalette(QPalette(QColor(0x2D, 0x2D, 0x2D))); // as a dark desktop gives it
    clinic::registerTables();
    try {
        desk::dressUp(application);
        desk::SaleComponent::registerBesideProgram();
        return walk::walkTheRoad(folder);
    } catch (const std::exception &error) {
        QTextStream(stderr) << QStringLiteral("desk-walk: ") << QString::fromUtf8(error.what()) << Qt::endl;
        return 1;
    }
}
