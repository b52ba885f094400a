#include "platform/automation/Automation.h"
#include "platform/runtime/RuntimeError.h"

#include <QLibrary>
#include <QScopeGuard>
#include <QSettings>
#include <QStandardPaths>

namespace automation::classRegister {

namespace {

QString &registerFile()
{
    static QString file =
        QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + QStringLiteral("/zelvo-classes.ini");
    return file;
}

QString &pathUnderWay()
{
    static QString path;
    return path;
}

QString entryOf(const QString &programId)
{
    return QStringLiteral("classes/") + programId.toLower();
}

} // namespace

void add(const QString &programId, const QString &libraryPath)
{
    QSettings(registerFile(), QSettings::IniFormat).setValue(entryOf(programId), libraryPath);
}

void remove(const QString &programId)
{
    QSettings(registerFile(), QSettings::IniFormat).remove(entryOf(programId));
}

QString libraryOf(const QString &programId)
{
    return QSettings(registerFile(), QSettings::IniFormat).value(entryOf(programId)).toString();
}

void registerLibrary(const QString &libraryPath)
{
    QLibrary library(libraryPath);
    library.setLoadHints(QLibrary::PreventUnloadHint);
    const auto registerServer = reinterpret_cast<DllRegisterServerFunction>(library.resolve("DllRegisterServer"));
    pathUnderWay() = libraryPath;
    const auto done = qScopeGuard([] { pathUnderWay().clear(); });
    if (!registerServer || registerServer() != Ok)
        throw runtime::RuntimeError(runtime::ErrorNumber::CannotCreateObject,
                                    QStringLiteral("구성요소를 등록하지 못했습니다: %1").arg(libraryPath));
}

QString libraryUnderWay()
{
    return pathUnderWay();
}

void setFile(const QString &path)
{
    registerFile() = path;
}

} // namespace automation::classRegister
