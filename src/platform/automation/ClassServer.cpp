#include "platform/automation/ClassServer.h"

#include "platform/automation/OwnLibrary.h"
#include "platform/controls/EventEdge.h"
#include "platform/runtime/Log.h"

#include <QApplication>
#include <QWidget>

#include <algorithm>
#include <exception>

namespace automation {

namespace {

/// A window may stay long after the object that opened it.
bool hasWindows(const void *library)
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    return std::ranges::any_of(windows, [&](const QWidget *window) {
        for (const QMetaObject *kind = window->metaObject(); kind; kind = kind->superClass()) {
            if (libraryHolding(kind) == library)
                return true;
        }
        return false;
    });
}

} // namespace

ClassServer::ClassServer(const QString &libraryName, std::vector<Class> classes)
    : libraryName_(libraryName)
    , classes_(std::move(classes))
{
}

int ClassServer::registerServer(const void *within) const
{
    QString path = libraryFileHolding(within);
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
    } catch (const std::exception &) {
        runtime::trapped();
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
            runtime::trapped();
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

int ClassServer::canUnloadNow(const void *within) const
{
    const bool busy = controls::eventRuns() || controls::workWaits();
    const void *const library = libraryHolding(within);
    return *living_ == 0 && !busy && !(library && hasWindows(library)) ? Ok : False;
}

} // namespace automation
