#include "platform/automation/Automation.h"
#include "platform/runtime/RuntimeError.h"

#include <QLibrary>
#include <QSettings>
#include <QStandardPaths>

namespace automation::classRegister {

namespace {

QString &otherFile()
{
    static QString file;
    return file;
}

QString registerFile()
{
    return otherFile().isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
                                       + QStringLiteral("/zelvo-classes.ini")
                                 : otherFile();
}

QString entryOf(const QString &programId)
{
    return QStringLiteral("classes/") + programId.toLower();
}

void store(QSettings &classes)
{
    classes.sync();
    if (classes.status() != QSettings::NoError)
        throw runtime::RuntimeError(runtime::ErrorNumber::InvalidCall,
                                    QStringLiteral("구성요소 목록을 저장하지 못했습니다: %1").arg(classes.fileName()));
}

} // namespace

void add(const QString &programId, const QString &libraryPath)
{
    QSettings classes(registerFile(), QSettings::IniFormat);
    // Every start registers; a file that says so already is not written again.
    if (classes.value(entryOf(programId)) != libraryPath)
        classes.setValue(entryOf(programId), libraryPath);
    store(classes);
}

void remove(const QString &programId)
{
    QSettings classes(registerFile(), QSettings::IniFormat);
    classes.remove(entryOf(programId));
    store(classes);
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
    if (!registerServer || registerServer() != Ok)
        throw runtime::RuntimeError(runtime::ErrorNumber::CannotCreateObject,
                                    QStringLiteral("구성요소를 등록하지 못했습니다: %1").arg(libraryPath));
}

void setFile(const QString &path)
{
    otherFile() = path;
}

} // namespace automation::classRegister
