#pragma once

#include "components/frame/Report.h"
#include "platform/ado/Connection.h"

#include <QObject>

#include <functional>
#include <memory>

namespace statistics {

/// What every statistic component is to its caller. The derived class bears the component's name and tells its report.
class StatComponent : public QObject
{
    Q_OBJECT
public:
    /// Makes the report's window on the connection and gives its handle at once; nothing is read and no event is run
    /// before it returns. The window is the caller's: it shows, places and destroys it.
    Q_INVOKABLE int StatStart(ado::ConnectionPtr &connection);

protected:
    using MakeReport = std::function<std::unique_ptr<Report>()>;
    explicit StatComponent(MakeReport make);

private:
    MakeReport make_;
};

} // namespace statistics
