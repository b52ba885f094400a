#include "components/frame/SheetPrint.h"

#include "components/frame/SheetChart.h"
#include "platform/controls/Appearance.h"
#include "platform/runtime/Format.h"

#include <QPageLayout>
#include <QPointer>
#include <QPrintPreviewDialog>
#include <QPrinter>

#include <algorithm>

namespace statistics {

namespace {

// Millimetres.
constexpr double lineHeight = 5;
constexpr double chartHeight = 60;
constexpr double sideMargin = 12;
constexpr double paddingMm = 1;

QPageLayout::Orientation orientationOf(const Sheet &sheet)
{
    int width = 0;
    for (const Column &column : sheet.columns)
        width += column.width;
    return width > 720 ? QPageLayout::Landscape : QPageLayout::Portrait;
}

} // namespace

/// The pen on the paper, in millimetres from the printable area's corner.
class SheetPrint::Page
{
public:
    Page(QPrinter &printer, QPainter &painter, const PrintedReport &report)
        : printer_(printer)
        , painter_(painter)
        , report_(report)
        , scale_(printer.resolution() / 25.4)
    {
        const QRectF area = printer.pageRect(QPrinter::Millimeter);
        width_ = area.width();
        height_ = area.height();
        int designed = 0;
        for (const Column &column : report.sheet.columns)
            designed += column.width;
        for (const Column &column : report.sheet.columns)
            widths_.push_back(width_ * column.width / std::max(1, designed));
    }

    void draw()
    {
        drawHead();
        drawSummary();
        drawCaptions();
        for (const Row &row : report_.sheet.rows) {
            makeRoom(lineHeight, true);
            drawRow(row, false);
        }
        if (!report_.sheet.totals.empty()) {
            makeRoom(lineHeight, true);
            drawRow(report_.sheet.totals, true);
        }
        drawChart();
        drawFoot();
    }

private:
    void text(double x, double width, const QString &words, int flags, bool bold = false, double points = 8)
    {
        QFont font = controls::deskFont();
        font.setPointSizeF(points);
        font.setBold(bold);
        painter_.setFont(font);
        const QRectF box((x + paddingMm) * scale_, y_ * scale_, (width - 2 * paddingMm) * scale_, lineHeight * scale_);
        const QFontMetricsF metrics(font, &printer_);
        painter_.drawText(box, flags | Qt::AlignVCenter | Qt::TextSingleLine,
                          metrics.elidedText(words, Qt::ElideRight, box.width()));
    }

    void rule(double weight)
    {
        painter_.setPen(QPen(controls::colors(controls::Ground::Paper).text, weight * scale_));
        painter_.drawLine(QPointF(0, y_ * scale_), QPointF(width_ * scale_, y_ * scale_));
        painter_.setPen(controls::colors(controls::Ground::Paper).text);
    }

    void drawHead()
    {
        text(0, width_, report_.title, Qt::AlignLeft, true, 13);
        text(0, width_, QStringLiteral("단위: 원"), Qt::AlignRight);
        y_ += lineHeight + 1;
        text(0, width_, report_.period, Qt::AlignLeft, false, 9);
        y_ += lineHeight + 1;
    }

    /// The groups side by side, as on the screen.
    void drawSummary()
    {
        const std::vector<SummaryLine> &lines = report_.sheet.summary;
        if (lines.empty())
            return;
        int groups = 0;
        for (std::size_t number = 0; number < lines.size(); ++number)
            groups += number == 0 || lines[number].group != lines[number - 1].group ? 1 : 0;
        const double column = width_ / groups;
        const double top = y_;
        double bottom = y_;
        double x = -column;
        for (std::size_t number = 0; number < lines.size(); ++number) {
            const SummaryLine &line = lines[number];
            if (number == 0 || line.group != lines[number - 1].group) {
                x += column;
                y_ = top;
                text(x, column, line.group, Qt::AlignLeft, true, 9);
                y_ += lineHeight;
            }
            text(x, column * 0.6, line.caption, Qt::AlignLeft, line.isResult);
            text(x + column * 0.5, column * 0.45, shownText(line.amount) + line.unit, Qt::AlignRight, line.isResult);
            y_ += lineHeight;
            bottom = std::max(bottom, y_);
        }
        y_ = bottom + 2;
    }

    void drawCaptions()
    {
        rule(0.3);
        Row captions;
        for (const Column &column : report_.sheet.columns)
            captions.emplace_back(column.caption);
        drawRow(captions, true);
        rule(0.15);
    }

    void drawRow(const Row &row, bool bold)
    {
        double x = 0;
        if (bold && &row == &report_.sheet.totals)
            rule(0.15);
        for (std::size_t column = 0; column < row.size(); ++column) {
            const bool number = report_.sheet.columns[column].kind == Column::Kind::Number;
            text(x, widths_[column], shownText(row[column]), number ? Qt::AlignRight : Qt::AlignLeft, bold);
            x += widths_[column];
        }
        y_ += lineHeight;
    }

    void drawChart()
    {
        if (report_.sheet.chart.categories.isEmpty())
            return;
        makeRoom(chartHeight + 4, false);
        y_ += 4;
        SheetChart chart;
        chart.resize(int(width_ * 4), int(chartHeight * 4));
        chart.chart()->setAnimationOptions(QChart::NoAnimation);
        chart.keepLight();
        chart.setPlan(report_.sheet.chart);
        // Laid out as on the screen, then drawn as lines and letters of the paper.
        chart.grab();
        chart.render(&painter_, QRectF(0, y_ * scale_, width_ * scale_, chartHeight * scale_));
        y_ += chartHeight;
    }

    void drawFoot()
    {
        const double here = y_;
        y_ = height_ - lineHeight;
        text(0, width_, QStringLiteral("인쇄: ") + runtime::dateTimeText(QDateTime::currentDateTime()), Qt::AlignLeft,
             false, 7);
        text(0, width_, QStringLiteral("- %1 -").arg(number_), Qt::AlignHCenter, false, 7);
        y_ = here;
    }

    void makeRoom(double needed, bool withCaptions)
    {
        if (y_ + needed <= height_ - 2 * lineHeight)
            return;
        drawFoot();
        printer_.newPage();
        ++number_;
        y_ = 0;
        if (withCaptions)
            drawCaptions();
    }

    QPrinter &printer_;
    QPainter &painter_;
    const PrintedReport &report_;
    double scale_;
    double width_ = 0;
    double height_ = 0;
    double y_ = 0;
    int number_ = 1;
    std::vector<double> widths_;
};

SheetPrint::SheetPrint(PrintedReport report)
    : report_(std::move(report))
{
}

bool SheetPrint::draw(QPrinter &printer) const
{
    QPainter painter;
    if (!painter.begin(&printer))
        return false;
    Page(printer, painter, report_).draw();
    return painter.end();
}

void SheetPrint::preview(QWidget *owner) const
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), orientationOf(report_.sheet),
                                      QMarginsF(sideMargin, sideMargin, sideMargin, sideMargin),
                                      QPageLayout::Millimeter));
    printer.setDocName(report_.title);
    // The owner may be closed under the preview, which then must not be destroyed twice.
    const QPointer<QPrintPreviewDialog> dialog = new QPrintPreviewDialog(&printer, owner);
    dialog->setWindowTitle(report_.title + QStringLiteral(" 인쇄"));
    QObject::connect(dialog, &QPrintPreviewDialog::paintRequested, dialog, [this](QPrinter *paper) { draw(*paper); });
    dialog->resize(900, 700);
    dialog->exec();
    delete dialog;
}

} // namespace statistics
