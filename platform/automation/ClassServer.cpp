#include "platform/automation/ClassServer.h"

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
    for (const Class &served : classes_)
        classRegister::add(served.programId, path);
    return Ok;
}

int ClassServer::unregisterServer() const
{
    for (const Class &served : classes_)
        classRegister::remove(served.programId);
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
        ++living_;
        QObject::connect(*object, &QObject::destroyed, [this] { --living_; });
        return Ok;
    }
    return ClassNotAvailable;
}

int ClassServer::canUnloadNow() const
{
    return living_ == 0 ? Ok : False;
}

} // namespace automation
