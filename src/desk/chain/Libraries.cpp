#include "desk/chain/Libraries.h"

#include "platform/automation/Automation.h"
#include "platform/runtime/Attempt.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

namespace libraries {

namespace {

/// Beside the program as it was built, else where the package puts them.
QString pathOf(const char *name)
{
    const QString file = QStringLiteral("lib%1.so").arg(QLatin1String(name));
    const QString beside = QDir(QCoreApplication::applicationDirPath()).filePath(file);
    return QFile::exists(beside) ? beside : QDir(automation::classRegister::installedFolder()).filePath(file);
}

} // namespace

/// Installed ones, too: an earlier copy of the program may have entered its own.
void enter(std::initializer_list<const char *> names)
{
    for (const char *name : names) {
        runtime::Attempt attempt; // what cannot be registered is told when it is asked for
        attempt([&] { automation::classRegister::registerLibrary(pathOf(name)); });
    }
}

} // namespace libraries
