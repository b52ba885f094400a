#pragma once

#include "platform/automation/Automation.h"

#include <QByteArray>

#include <functional>
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
    QString libraryName_;
    std::vector<Class> classes_;
    int living_ = 0;
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
