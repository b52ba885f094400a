#include "platform/print/RollPaper.h"

#include "platform/print/Document.h"
#include "platform/runtime/RuntimeError.h"

#include <QPageSize>
#include <QPrinter>
#include <QPrinterInfo>

#include <algorithm>
#include <cmath>
#include <limits>

namespace print {

namespace {

/// Sizes of a description are whole points.
constexpr double sameMm = 1;

QSizeF millimetres(const QPageSize &size)
{
    return size.size(QPageSize::Millimeter);
}

/// What the printer leaves free at the edges of this size.
QMarginsF edgesOf(QPrinter &printer, const QPageSize &size)
{
    printer.setPageSize(size);
    QPageLayout layout = printer.pageLayout();
    layout.setUnits(QPageLayout::Millimeter);
    return layout.minimumMargins();
}

/// The description gives points.
bool takesAnyLength(const QPrinterInfo &info, double width)
{
    const double least = info.minimumPhysicalPageSize().size(QPageSize::Millimeter).width();
    const double most = info.maximumPhysicalPageSize().size(QPageSize::Millimeter).width();
    return info.supportsCustomPageSizes() && least <= width + sameMm && width <= most + sameMm;
}

} // namespace

double RollPaper::lengthFor(double height, double feed) const
{
    const double whole = edges.top() + height + std::max(feed, edges.bottom());
    if (longest > 0 && whole <= longest)
        return std::max(whole, shortest);
    const double least = edges.top() + height + edges.bottom();
    const double own = lengths.front();
    double chosen = own;
    for (const double length : lengths) {
        const bool holds = length >= least && length <= 2 * least;
        if (holds && (chosen < least || length < chosen) && own < least)
            chosen = length;
    }
    return chosen;
}

RollPaper endlessRoll(double width)
{
    return {.width = width, .lengths = {A4.height()}, .longest = std::numeric_limits<double>::max()};
}

RollPaper rollPaperOf(const QString &printer)
{
    const QPrinterInfo info = QPrinterInfo::printerInfo(printer);
    const QPageSize own = info.isNull() ? QPageSize() : info.defaultPageSize();
    if (!own.isValid())
        throw runtime::RuntimeError(runtime::ErrorNumber::InvalidCall,
                                    QStringLiteral("프린터의 용지 크기를 알 수 없습니다: ") + printer);
    QPrinter device(info, QPrinter::HighResolution);
    RollPaper paper{
        .width = millimetres(own).width(), .edges = edgesOf(device, own), .lengths = {millimetres(own).height()}};
    // A printer that tells several edges for one roll is taken at its narrowest.
    const auto keepOff = [&](const QPageSize &size) { paper.edges = paper.edges | edgesOf(device, size); };
    for (const QPageSize &size : info.supportedPageSizes()) {
        const QSizeF sheet = millimetres(size);
        if (std::abs(sheet.width() - paper.width) > sameMm)
            continue;
        paper.lengths.push_back(sheet.height());
        keepOff(size);
    }
    if (takesAnyLength(info, paper.width)) {
        paper.shortest = millimetres(info.minimumPhysicalPageSize()).height();
        paper.longest = millimetres(info.maximumPhysicalPageSize()).height();
        keepOff(QPageSize(QSizeF(paper.width, paper.longest), QPageSize::Millimeter));
    }
    return paper;
}

} // namespace print
