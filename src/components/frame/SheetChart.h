#pragma once

#include "components/frame/Sheet.h"
#include "platform/controls/Palette.h"

#include <QtCharts/QChartView>

namespace statistics {

/// The chart of a sheet: bars standing side by side or lying; a line where there are too many to stand.
class SheetChart : public QChartView
{
    Q_OBJECT
public:
    explicit SheetChart(QWidget *parent = nullptr);

    void setPlan(const Chart &plan);
    /// As on paper, whatever the desktop.
    void keepLight();

private:
    void dress();
    controls::Scheme scheme() const { return keepsLight_ ? controls::Scheme::Light : controls::scheme(); }

    Chart plan_;
    bool keepsLight_ = false;
};

} // namespace statistics
