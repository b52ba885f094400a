#include "platform/automation/Automation.h"
#include "platform/runtime/ProgramThread.h"
#include "platform/runtime/RuntimeError.h"

#include <QLibrary>

namespace automation {

namespace {

[[noreturn]] void raiseCannotCreate(const QString &programId, const QString &cause)
{
    throw runtime::RuntimeError(runtime::ErrorNumber::CannotCreateObject,
                                QStringLiteral("구성요소를 실행할 수 없습니다: %1 (%2)").arg(programId, cause));
}

} // namespace

ObjectPtr createObject(const QString &programId)
{
    runtime::demandProgramThread();
    const QString path = classRegister::libraryOf(programId);
    if (path.isEmpty())
        raiseCannotCreate(programId, QStringLiteral("등록되지 않은 구성요소"));

    // Windows of the component may outlive the object, so its code stays loaded.
    QLibrary library(path);
    library.setLoadHints(QLibrary::PreventUnloadHint);
    const auto getClassObject = reinterpret_cast<DllGetClassObjectFunction>(library.resolve("DllGetClassObject"));
    if (!getClassObject)
        raiseCannotCreate(programId, library.errorString());

    QObject *object = nullptr;
    const int result = getClassObject(programId.toUtf8().constData(), &object);
    if (result != Ok || !object)
        raiseCannotCreate(programId, QStringLiteral("구성요소가 거절함, %1").arg(result));
    return ObjectPtr(object);
}

} // namespace automation
