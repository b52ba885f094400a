#include "components/frame/StatComponent.h"

#include "clinic/Tables.h"
#include "components/frame/ReportWindow.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/RuntimeError.h"

namespace statistics {

StatComponent::StatComponent(MakeReport make)
    : make_(std::move(make))
{
    clinic::registerTables();
}

int StatComponent::StatStart(ado::ConnectionPtr &connection)
{
    if (!connection)
        throw runtime::RuntimeError(runtime::ErrorNumber::ObjectClosed,
                                    QStringLiteral("데이터베이스에 연결되어 있지 않습니다."));
    auto window = std::make_unique<ReportWindow>(make_(), connection);
    const int handle = runtime::toLong(std::int64_t(window->winId()));
    static_cast<void>(window.release()); // the caller's from here on
    return handle;
}

} // namespace statistics
