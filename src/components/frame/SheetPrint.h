#pragma once

#include "components/frame/Sheet.h"
#include "platform/print/Document.h"

#include <QString>
#include <QWidget>

namespace statistics {

struct PrintedReport
{
    QString title;
    QString period;
    Sheet sheet;
};

/// A report on paper: title, period and summary, the table with its captions on every page, totals and chart at the end.
class SheetPrint
{
public:
    explicit SheetPrint(PrintedReport report);

    /// The preview, modal over `owner`, from which the user prints.
    void preview(QWidget *owner) const;
    print::Document document() const;

private:
    class Page;
    PrintedReport report_;
};

} // namespace statistics
