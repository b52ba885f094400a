#include "host/sample/MakeOnTerminal.h"

#include "platform/runtime/RuntimeError.h"

#include <QElapsedTimer>
#include <QLocale>
#include <QTextStream>

#include <csignal>

namespace sample {

namespace {

volatile std::sig_atomic_t stopAsked = 0;

void askToStop(int)
{
    stopAsked = 1;
}

} // namespace

int makeOnTerminal(const QString &address, Size size)
{
    QTextStream terminal(stderr);
    QElapsedTimer sinceStart;
    sinceStart.start();
    const QLocale grouping(QLocale::Korean, QLocale::SouthKorea);
    const auto previous = std::signal(SIGINT, askToStop);
    qint64 lastShown = -1000;
    bool counted = false;
    const auto progress = [&](qint64 done, qint64 total) {
        if (done == total || sinceStart.elapsed() - lastShown >= 200) {
            lastShown = sinceStart.elapsed();
            counted = true;
            terminal << QStringLiteral("\r주문 %1 / %2 (%3%)  ")
                            .arg(grouping.toString(done), grouping.toString(total))
                            .arg(done * 100 / total)
                     << Qt::flush;
        }
        return stopAsked == 0;
    };
    try {
        makeClinic(address, size, progress);
    } catch (const runtime::RuntimeError &) {
        std::signal(SIGINT, previous);
        if (counted)
            terminal << Qt::endl;
        if (!stopAsked)
            throw;
        terminal << QStringLiteral("중단하였습니다. 만들던 데이터베이스는 남기지 않았습니다.") << Qt::endl;
        return 1;
    }
    std::signal(SIGINT, previous);
    terminal << (counted ? QStringLiteral("\r") : QString())
             << QStringLiteral("데이터베이스를 만들었습니다 (%1초): %2").arg(double(sinceStart.elapsed()) / 1000, 0, 'f', 1).arg(address)
             << Qt::endl;
    return 0;
}

} // namespace sample
