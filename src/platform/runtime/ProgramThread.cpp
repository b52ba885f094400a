#include "platform/runtime/ProgramThread.h"

#include "platform/runtime/RuntimeError.h"

#include <QCoreApplication>
#include <QThread>

namespace runtime {

void demandProgramThread()
{
    const QCoreApplication *const program = QCoreApplication::instance();
    if (program && program->thread() != QThread::currentThread())
        throw RuntimeError(ErrorNumber::InvalidCall, QStringLiteral("프로그램 오류입니다. 개발사로 문의하십시오. "
                                                                    "(다른 스레드에서 호출했습니다)"));
}

} // namespace runtime
