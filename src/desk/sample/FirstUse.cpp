#include "desk/sample/FirstUse.h"

#include "desk/files/Writable.h"
#include "desk/sample/Clinic.h"
#include "platform/runtime/RuntimeError.h"

#include <QFile>
#include <QFileInfo>
#include <QLockFile>

namespace sample {

void makeOnFirstUse(const QString &file)
{
    constexpr int patience = 60'000; // milliseconds; one is made in a fraction of a second
    if (QFile::exists(file))
        return;
    const QString trouble = files::troubleWithFolder(QFileInfo(file).absolutePath());
    if (!trouble.isEmpty())
        throw runtime::RuntimeError(runtime::ErrorNumber::Database, trouble);
    QLockFile making(file + QStringLiteral(".lock"));
    if (!making.tryLock(patience))
        throw runtime::RuntimeError(runtime::ErrorNumber::Database,
                                    QStringLiteral("견본 한의원을 준비하지 못했습니다. 잠시 후 다시 시도하십시오: ")
                                        + file);
    if (!QFile::exists(file))
        makeClinic(QStringLiteral("sqlite:") + file, Size::Small);
}

} // namespace sample
