#include "fuzz/Fuzz.h"

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>

namespace {

// Files that a target opens lie in a folder of its own, which is also where it stands.
struct Place
{
    Place()
    {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
        static int count = 1;
        static char name[] = "fuzz";
        static char *arguments[] = {name, nullptr};
        new QApplication(count, arguments); // outlives the statics of the targets
        // In memory where that can be had: some targets write a file a call.
        const QString memory = QStringLiteral("/dev/shm");
        static const QTemporaryDir folder((QDir(memory).exists() ? memory : QDir::tempPath())
                                          + QStringLiteral("/fuzz-XXXXXX"));
        QDir::setCurrent(folder.path());
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const Place place;
    fuzz(QByteArray(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)));
    return 0;
}
