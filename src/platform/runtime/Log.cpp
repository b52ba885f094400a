#include "platform/runtime/Log.h"

#include "platform/runtime/LogText.h"
#include "platform/runtime/Operation.h"
#include "platform/runtime/RuntimeError.h"

#include <exception>
#include <typeinfo>
#include <utility>

namespace runtime {

Q_LOGGING_CATEGORY(databaseLog, "zelvo.database", QtFatalMsg)
Q_LOGGING_CATEGORY(programLog, "zelvo.program", QtFatalMsg)

namespace {

QByteArray shown(const Place &place)
{
    const QByteArray file(place.file);
    return file.mid(file.lastIndexOf('/') + 1) + ':' + QByteArray::number(place.line);
}

const QLoggingCategory &categoryOf(ErrorNumber number)
{
    const bool ofServer =
        number == ErrorNumber::Database || number == ErrorNumber::ConnectionLost || number == ErrorNumber::Conflict;
    return ofServer ? databaseLog() : programLog();
}

void write(const RuntimeError &error, const Place &place)
{
    RuntimeError::Origin &origin = error.origin();
    if (std::exchange(origin.logged, true))
        return;
    QByteArray line = "error " + QByteArray::number(static_cast<int>(error.number()));
    if (!origin.server.state.isEmpty())
        line += " state " + origin.server.state;
    line += " in [" + origin.operations + "] raised " + shown(origin.raised) + " trapped " + shown(place);
    if (!origin.server.text.isEmpty())
        line += ": " + oneLine(origin.server.text);
    qCWarning(categoryOf(error.number()), "%s", line.constData());
}

/// Another library's: its text may hold anything.
void writeForeign(const char *type, const Place &place)
{
    qCWarning(programLog, "exception %s in [%s] trapped %s", type, Operation::current().constData(),
              shown(place).constData());
}

} // namespace

void sayErrors()
{
    static const QLoggingCategory::CategoryFilter earlier =
        QLoggingCategory::installFilter([](QLoggingCategory *category) {
            if (earlier) // not while this one is installed
                earlier(category);
            if (QByteArrayView(category->categoryName()).startsWith("zelvo.")) {
                for (const QtMsgType type : {QtInfoMsg, QtWarningMsg, QtCriticalMsg})
                    category->setEnabled(type, true);
            }
        });
}

void trapped(Place place)
{
    try {
        throw;
    } catch (const RuntimeError &error) {
        write(error, place);
    } catch (const std::exception &error) {
        writeForeign(typeid(error).name(), place);
    } catch (...) {
        writeForeign("?", place);
    }
}

} // namespace runtime
