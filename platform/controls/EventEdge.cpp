#include "platform/controls/EventEdge.h"

#include "platform/ado/Connection.h"
#include "platform/controls/MessageBox.h"
#include "platform/runtime/RuntimeError.h"

#include <new>
#include <optional>

namespace controls {

namespace {

/// Runs a step; what left it as an error comes back as a text for the user.
std::optional<QString> failureOf(const std::function<void()> &step)
{
    try {
        step();
        return std::nullopt;
    } catch (const runtime::RuntimeError &error) {
        return error.description();
    } catch (const std::bad_alloc &) {
        return QStringLiteral("메모리가 부족합니다.");
    } catch (const std::exception &error) {
        return QStringLiteral("내부 오류가 발생했습니다.\n(%1)").arg(QString::fromUtf8(error.what()));
    } catch (...) {
        return QStringLiteral("내부 오류가 발생했습니다.");
    }
}

/// The rollback is over before the box opens its own event loop: nothing may stay locked while somebody reads.
std::optional<QString> runGuarded(const std::function<void()> &handler)
{
    ado::AbandonedTransactions abandoned;
    std::optional<QString> failure = failureOf(handler);
    const std::optional<QString> rollbackFailure = failureOf([&] { abandoned.rollBack(); });
    return failure ? failure : rollbackFailure;
}

} // namespace

void runEvent(const std::function<void()> &handler)
{
    if (const std::optional<QString> failure = runGuarded(handler))
        MsgBox(*failure, WarningIcon);
}

} // namespace controls
