#pragma once

#include <QObject>
#include <QString>
#include <QVariantList>

#include <memory>

/// Objects created by program identifier ("library.class") and called by name.
namespace automation {

using ObjectPtr = std::shared_ptr<QObject>;

/// Creates an object of a registered class. Raises CannotCreateObject for an unknown identifier, a missing library or a
/// library that refuses. The library stays loaded for the process's life.
ObjectPtr createObject(const QString &programId);

/// Calls an invokable of the object by name, case ignored. Arguments are converted to the parameters' types; an invalid
/// value gives a parameter its type's empty value. What a member takes by reference is written back into `arguments`
/// after the call: `T &`, where T is a type of Qt's own, runtime::Currency or ado::ConnectionPtr. Trailing optional
/// parameters may be left out. Errors that the member raises pass through; NoSuchMember and WrongArguments are the
/// dispatcher's own.
QVariant call(QObject &object, const QString &member, QVariantList &arguments);
QVariant call(QObject &object, const QString &member);

/// Per-user class register: which library serves a program identifier. An INI file; writing raises InvalidCall when it
/// cannot be stored. Components that were installed with this library need no entry.
namespace classRegister {
void add(const QString &programId, const QString &libraryPath);
void remove(const QString &programId);
/// Path of the serving library: as registered by the user or, where there is no such file, as installed; empty when unknown.
QString libraryOf(const QString &programId);
/// Where components lie that are installed for all users.
QString installedFolder();
/// Lets a component library write its own entries: loads it and calls its DllRegisterServer. Raises CannotCreateObject.
void registerLibrary(const QString &libraryPath);
/// Another register file, for tests and trial runs; an empty text brings the user's own back.
void setFile(const QString &path);
} // namespace classRegister

/// Results of the four class-server exports.
enum ServerResult : int { Ok = 0, False = 1, ClassNotAvailable = int(0x80040111u), Failed = int(0x80004005u) };

/// The exports, plain C functions of every component library:
///   int DllRegisterServer(); int DllUnregisterServer(); int DllCanUnloadNow();
///   int DllGetClassObject(const char *programId, QObject **object)   -- the caller owns *object
using DllRegisterServerFunction = int (*)();
using DllGetClassObjectFunction = int (*)(const char *, QObject **);

} // namespace automation
