#pragma once

#include "components/frame/Sheet.h"
#include "platform/print/Document.h"

#include <QString>

namespace statistics {

struct PrintedReport
{
    QString title;
    QString period;
    Sheet sheet;
};

/// A report on paper: title, period and summary, the table with its captions on every page, totals and chart at the end.
print::Document sheetOnPaper(const PrintedReport &report);

} // namespace statistics
