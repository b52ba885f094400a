#include "clinic/Tables.h"
#include "desk/walk/Walk.h"
#include "desk/window/Component.h"
#include "desk/window/Look.h"
#include "platform/controls/Palette.h"

#include <QApplication>
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
    clinic::registerTables();
    try {
        desk::dressUp(application);
        if (qEnvironmentVariableIsSet("ZELVO_WALK_DARK"))
            QApplication::setPalette(controls::deskPalette(controls::Scheme::Dark));
        desk::SaleComponent::registerBesideProgram();
        return walk::walkTheRoad(folder);
    } catch (const std::exception &error) {
        QTextStream(stderr) << QStringLiteral("desk-walk: ") << QString::fromUtf8(error.what()) << Qt::endl;
        return 1;
    }
}
