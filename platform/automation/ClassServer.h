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

    /// `libraryName` is the library's file name without prefix and suffix; it is looked for beside the program unless
    /// the register knows its path.
    ClassServer(const QString &libraryName, std::vector<Class> classes);

    int registerServer() const;
    int unregisterServer() const;
    /// The caller owns *object.
    int classObject(const char *programId, QObject **object);
    /// Ok when no object of this library lives, otherwise False.
    int canUnloadNow() const;

private:
    int onEveryClass(const std::function<void(const QString &)> &step) const;

    QString libraryName_;
    std::vector<Class> classes_;
    std::shared_ptr<int> living_ = std::make_shared<int>(0); // objects may outlive the server at the program's end
};

} // namespace automation

/// Defines the four exports of a component library over a function that returns its ClassServer.
#define ZELVO_CLASS_SERVER(serverFunction)                                                                             \
    extern "C" {                                                                                                       \
    Q_DECL_EXPORT int DllRegisterServer() { return serverFunction().registerServer(); }                                \
    Q_DECL_EXPORT int DllUnregisterServer() { return serverFunction().unregisterServer(); }                            \
    Q_DECL_EXPORT int DllGetClassObject(const char *programId, QObject **object)                                       \
    {                                                                                                                  \
        return serverFunction().classObject(programId, object);                                                        \
    }                                                                                                                  \
    Q_DECL_EXPORT int DllCanUnloadNow() { return serverFunction().canUnloadNow(); }                                    \
    }
