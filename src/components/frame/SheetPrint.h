#pragma once

#include "components/frame/CashCount.h"
#include "components/frame/Sheet.h"
#include "platform/print/Document.h"

#include <QString>

#include <optional>

namespace statistics {

struct PrintedReport
{
    QString title;
    QString period;
    Sheet sheet;
    QString view = {}; ///< its caption; empty where there is only one
    QString shop = {};
    std::optional<CashCount> count = {};
};

/// A report on paper, saying what its window says: title, shop, period, view, how to read it, summary, the count of the
/// drawer; the table with its captions on every page, totals and chart at the end.
print::Document sheetOnPaper(const PrintedReport &report);

} // namespace statistics
