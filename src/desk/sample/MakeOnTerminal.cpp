#include "desk/sample/MakeOnTerminal.h"

#include "desk/terminal/ProgressLine.h"
#include "platform/ado/ShownAddress.h"
#include "platform/runtime/RuntimeError.h"

#include <QTextStream>

namespace sample {

int makeOnTerminal(const QString &address, Size size)
{
    terminal::ProgressLine line(QStringLiteral("거래"));
    try {
        makeClinic(address, size, [&](qint64 done, qint64 total) { return line.show(done, total); });
    } catch (const runtime::RuntimeError &) {
        line.leave();
        if (!line.stopAsked())
            throw;
        QTextStream(stderr) << QStringLiteral("중단했습니다. 만들던 데이터베이스는 남기지 않았습니다.") << Qt::endl;
        return 1;
    }
    line.finish(QStringLiteral("데이터베이스를 만들었습니다"), ado::addressToShow(address));
    return 0;
}

} // namespace sample
