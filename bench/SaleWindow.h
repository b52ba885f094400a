#pragma once

#include "desk/window/Patient.h"
#include "platform/ado/Connection.h"
#include "platform/controls/RecordsetGrid.h"

#include <QPointer>
#include <QWidget>

#include <stdexcept>
#include <string>

namespace bench {

/// Lets events happen until nothing is painted any more.
void untilPainted();

/// The sale window as a host opens it for a patient, closed at the end.
class SaleWindow
{
public:
    explicit SaleWindow(const ado::ConnectionPtr &connection)
        : connection_(connection)
    {
    }
    ~SaleWindow() { close(); }
    SaleWindow(const SaleWindow &) = delete;
    SaleWindow &operator=(const SaleWindow &) = delete;

    /// Shows the patient's sale, also where the window stands already, and returns when it is painted.
    void open(const desk::Patient &patient);
    void close();

    template <typename Control>
    Control &control(const char *name) const
    {
        auto *found = window_ ? window_->findChild<Control *>(QLatin1String(name)) : nullptr;
        if (!found)
            throw std::runtime_error(std::string(name) + " is missing");
        return *found;
    }
    controls::RecordsetGrid &grid(const char *name) const { return control<controls::RecordsetGrid>(name); }
    /// The one child of that class.
    template <typename Pane>
    Pane &pane() const
    {
        return *window_->findChild<Pane *>();
    }

private:
    ado::ConnectionPtr connection_;
    QPointer<QWidget> window_;
};

} // namespace bench
