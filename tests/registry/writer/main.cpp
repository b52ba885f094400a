#include "platform/registry/AppSettings.h"

#include <QCoreApplication>

/// settings_writer FOLDER NAME COUNT: writes keys NAME0, NAME1 ... each with its number.
int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 4)
        return 2;
    registry::setStoreFolder(arguments.at(1));
    for (int i = 0; i < arguments.at(3).toInt(); ++i)
        registry::SaveSetting(QStringLiteral("Zelvo Desk"), QStringLiteral("접수실 설정"),
                              arguments.at(2) + QString::number(i), QString::number(i));
    return 0;
}
