#include "platform/automation/ClassServer.h"

#include "platform/runtime/RuntimeError.h"

#include <QCoreApplication>

#include <exception>

namespace automation {

ClassServer::ClassServer(const QString &libraryName, std::vector<Class> classes)
    : libraryName_(libraryName)
    , classes_(std::move(classes))
{
}

int ClassServer::registerServer() const
{
    QString path = classRegister::libraryUnderWay();
    if (path.isEmpty())
        path = QCoreApplication::applicationDirPath() + QLatin1Char('/') + libraryName_;
    return onEveryClass([&path](const QString &programId) { classRegister::add(programId, path); });
}

int ClassServer::unregisterServer() const
{
    return onEveryClass(classRegister::remove);
}

int ClassServer::onEveryClass(const std::function<void(const QString &)> &step) const
{
    try {
        for (const Class &served : classes_)
            step(served.programId);
    } catch (const runtime::RuntimeError &) {
        return Failed; // an error must not cross a plain C export
    }
    return Ok;
}

int ClassServer::classObject(const char *programId, QObject **object)
{
    *object = nullptr;
    const QString wanted = QString::fromUtf8(programId);
    for (const Class &served : classes_) {
        if (served.programId.compare(wanted, Qt::CaseInsensitive) != 0)
            continue;
        try {
            *object = served.create();
        } catch (const std::exception &) {
            return Failed;
        }
        if (!*object)
            return Failed;
        ++*living_;
        QObject::connect(*object, &QObject::destroyed, [living = living_] { --*living; });
        return Ok;
    }
    return ClassNotAvailable;
}

int ClassServer::canUnloadNow() const
{
    return *living_ == 0 ? Ok : False;
}

} // namespace automation
