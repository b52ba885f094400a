#include "components/frame/SheetPrint.h"

#include "components/frame/SheetChart.h"
#include "platform/controls/Appearance.h"
#include "platform/controls/Modal.h"
#include "platform/print/Lengths.h"
#include "platform/print/PreviewWindow.h"
#include "platform/runtime/Format.h"

#include <QDateTime>
#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <memory>

namespace statistics {

namespace {

// Millimetres.
constexpr double lineHeight = 5;
constexpr double chartHeight = 60;
constexpr double sideMargin = 12;
constexpr double paddingMm = 1;

QSizeF paperOf(const Sheet &sheet)
{
    int width = 0;
    for (const Column &column : sheet.columns)
        width += column.width;
    return width > 720 ? print::A4.transposed() : print::A4;
}

} // namespace

/// The pen on the paper, in millimetres from the corner inside the margins. It goes through the whole report and draws the
/// wanted page of it; without a painter it only counts.
class SheetPrint::Page
{
public:
    Page(const PrintedReport &report, QPainter *painter = nullptr, int wanted = 0)
        : painter_(painter)
        , wanted_(wanted)
        , report_(report)
    {
        const QSizeF paper = paperOf(report.sheet);
        width_ = paper.width() - 2 * sideMargin;
        height_ = paper.height() - 2 * sideMargin;
        if (painter_)
            painter_->translate(sideMargin * scale_, sideMargin * scale_);
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
    int count() const { return number_; }

private:
    bool isWanted() const { return painter_ && number_ == wanted_; }

    void text(double x, double width, const QString &words, int flags, bool bold = false, double points = 8)
    {
        if (!isWanted())
            return;
        QFont font = controls::deskFont();
        font.setPixelSize(qRound(points / print::pointsPerInch * print::gridPerInch));
        font.setBold(bold);
        painter_->setFont(font);
        const QRectF box((x + paddingMm) * scale_, y_ * scale_, (width - 2 * paddingMm) * scale_, lineHeight * scale_);
        const QFontMetricsF metrics(font);
        painter_->drawText(box, flags | Qt::AlignVCenter | Qt::TextSingleLine,
                           metrics.elidedText(words, Qt::ElideRight, box.width()));
    }

    void rule(double weight)
    {
        if (!isWanted())
            return;
        painter_->setPen(QPen(Qt::black, weight * scale_));
        painter_->drawLine(QPointF(0, y_ * scale_), QPointF(width_ * scale_, y_ * scale_));
        painter_->setPen(Qt::black);
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
        if (isWanted())
            renderChart();
        y_ += chartHeight;
    }

    void renderChart()
    {
        SheetChart chart;
        chart.resize(int(width_ * 4), int(chartHeight * 4));
        chart.chart()->setAnimationOptions(QChart::NoAnimation);
        chart.setPlan(report_.sheet.chart);
        // Laid out as on the screen, then drawn as lines and letters of the paper.
        chart.grab();
        chart.render(painter_, QRectF(0, y_ * scale_, width_ * scale_, chartHeight * scale_));
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
        ++number_;
        y_ = 0;
        if (withCaptions)
            drawCaptions();
    }

    QPainter *painter_;
    int wanted_;
    const PrintedReport &report_;
    double scale_ = print::gridPerMm;
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

print::Document SheetPrint::document() const
{
    const auto report = std::make_shared<const PrintedReport>(report_);
    Page counted(*report);
    counted.draw();
    print::Document document(paperOf(report->sheet));
    for (int page = 1; page <= counted.count(); ++page) {
        if (page > 1)
            document.addPage();
        document.addDrawing([report, page](QPainter &painter) { Page(*report, &painter, page).draw(); });
    }
    return document;
}

void SheetPrint::preview(QWidget *owner) const
{
    // The owner may be closed under the preview.
    const controls::Modal<print::PreviewWindow> window(
        owner, report_.title + QStringLiteral(" 인쇄"),
        print::PrinterMemory{QStringLiteral("Zelvo Desk"), QStringLiteral("물품판매관리")});
    window->vsPrint()->setDocument(document(), report_.title);
    window->resize(1000, 760);
    controls::runModal(window.get());
}

} // namespace statistics
