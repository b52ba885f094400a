#pragma once

#include "components/frame/Sheet.h"

#include <QPainter>
#include <QString>

class QPrinter;

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

    /// The toolkit's preview, modal over `owner`, from which the user prints.
    void preview(QWidget *owner) const;
    /// Draws all pages; false when the printer does not begin.
    bool draw(QPrinter &printer) const;

private:
    class Page;
    PrintedReport report_;
};

} // namespace statistics
