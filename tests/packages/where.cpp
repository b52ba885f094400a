#include "platform/runtime/ProgramFolder.h"

#include <QCoreApplication>
#include <QTextStream>

/// Says where files of this program go.
int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QTextStream(stdout) << runtime::programFolder() << Qt::endl;
}
