#pragma once

#include "components/frame/Sheet.h"

#include <QWidget>

namespace statistics {

/// The summary of a sheet: its groups side by side, a caption and an amount a line. Hidden when there is none.
class SummaryBox : public QWidget
{
    Q_OBJECT
public:
    explicit SummaryBox(QWidget *parent = nullptr);

    void setLines(const std::vector<SummaryLine> &lines);
};

} // namespace statistics
