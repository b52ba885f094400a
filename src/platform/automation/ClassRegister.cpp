#include "platform/automation/Automation.h"
#include "platform/automation/OwnLibrary.h"
#include "platform/runtime/RuntimeError.h"

#include <QDir>
#include <QFileInfo>
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

/// The library that bears the identifier's first word, case ignored as everywhere in identifiers; empty when none does.
QString installedLibraryOf(const QString &programId)
{
    const QString name = programId.section(QLatin1Char('.'), 0, 0);
    for (const QFileInfo &file : QDir(installedFolder()).entryInfoList(QDir::Files)) {
        const QString found = file.baseName(); // some systems put "lib" before it
        if (found.compare(name, Qt::CaseInsensitive) == 0
            || found.compare(QLatin1String("lib") + name, Qt::CaseInsensitive) == 0)
            return file.absoluteFilePath();
    }
    return {};
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
    const QString entered = QSettings(registerFile(), QSettings::IniFormat).value(entryOf(programId)).toString();
    if (!otherFile().isEmpty() || QFile::exists(entered))
        return entered;
    const QString installed = installedLibraryOf(programId);
    return installed.isEmpty() ? entered : installed;
}

QString installedFolder()
{
    static const char withinThisLibrary = 0;
    const QFileInfo library(libraryFileHolding(&withinThisLibrary));
    return library.canonicalPath() + QStringLiteral("/zelvo");
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
