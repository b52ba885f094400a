#pragma once

#include "platform/automation/Automation.h"

#include <QByteArray>

#include <functional>
#include <memory>
#include <vector>

namespace automation {

/// What a component library serves; stands behind its four exports (see ZELVO_CLASS_SERVER).
class ClassServer
{
public:
    struct Class
    {
        QString programId;
        std::function<QObject *()> create;
    };

    /// `libraryName` is the library's file name without prefix and suffix, for a system that cannot tell where it lies.
    ClassServer(const QString &libraryName, std::vector<Class> classes);

    /// Enters the library that holds the address, which is its own.
    int registerServer(const void *within) const;
    int unregisterServer() const;
    /// The caller owns *object.
    int classObject(const char *programId, QObject **object);
    /// Ok when nothing needs the code of the library that holds the address: no object of it lives and no window of its
    /// classes, and no event is under way or waits. Otherwise False.
    int canUnloadNow(const void *within) const;

private:
    int onEveryClass(const std::function<void(const QString &)> &step) const;

    QString libraryName_;
    std::vector<Class> classes_;
    std::shared_ptr<int> living_ = std::make_shared<int>(0); // objects may outlive the server at the program's end
};

} // namespace automation

/// Defines the four exports of a component library over a function that returns its ClassServer.
#define ZELVO_CLASS_SERVER(serverFunction)                                                                             \
    static const char withinThisLibrary = 0;                                                                           \
    extern "C" {                                                                                                       \
    Q_DECL_EXPORT int DllRegisterServer()                                                                              \
    {                                                                                                                  \
        return serverFunction().registerServer(&withinThisLibrary);                                                    \
    }                                                                                                                  \
    Q_DECL_EXPORT int DllUnregisterServer()                                                                            \
    {                                                                                                                  \
        return serverFunction().unregisterServer();                                                                    \
    }                                                                                                                  \
    Q_DECL_EXPORT int DllGetClassObject(const char *programId, QObject **object)                                       \
    {                                                                                                                  \
        return serverFunction().classObject(programId, object);                                                        \
    }                                                                                                                  \
    Q_DECL_EXPORT int DllCanUnloadNow()                                                                                \
    {                                                                                                                  \
        return serverFunction().canUnloadNow(&withinThisLibrary);                                                      \
    }                                                                                                                  \
    }
