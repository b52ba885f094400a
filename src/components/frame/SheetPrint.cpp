#include "components/frame/SheetPrint.h"

#include "components/frame/SheetChart.h"
#include "platform/controls/Appearance.h"
#include "platform/runtime/Format.h"

#include <QImage>
#include <QPainter>

#include <algorithm>

namespace statistics {

namespace {

// Millimetres.
constexpr double lineHeight = 5;
constexpr double chartHeight = 60;
constexpr double margin = 12;
constexpr double paddingMm = 1;

constexpr int chartDots = 3; ///< of the paper for one of the screen

/// Upright, or lying where the table is wide.
QSizeF paperOf(const Sheet &sheet)
{
    int width = 0;
    for (const Column &column : sheet.columns)
        width += column.width;
    return width > 720 ? print::A4.transposed() : print::A4;
}

/// The pen on the paper, in millimetres from the printable area's corner.
class Pen
{
public:
    explicit Pen(const PrintedReport &report)
        : report_(report)
        , document_(paperOf(report.sheet))
        , width_(document_.paper().width() - 2 * margin)
        , height_(document_.paper().height() - 2 * margin)
    {
        int designed = 0;
        for (const Column &column : report.sheet.columns)
            designed += column.width;
        for (const Column &column : report.sheet.columns)
            widths_.push_back(width_ * column.width / std::max(1, designed));
    }

    print::Document draw()
    {
        beginPage();
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
        endPage();
        return document_;
    }

private:
    void beginPage()
    {
        page_ = print::Drawing();
        painter_.begin(&page_.strokes);
        painter_.setRenderHint(QPainter::Antialiasing);
        painter_.setPen(ink_);
        painter_.translate(margin * scale_, margin * scale_);
        y_ = 0;
    }

    void endPage()
    {
        drawFoot();
        painter_.end();
        document_.addDrawing(page_);
    }

    void text(double x, double width, const QString &words, int flags, bool bold = false, double points = 8)
    {
        QFont font = controls::deskFont();
        font.setPixelSize(qRound(points / 72 * print::gridPerInch));
        font.setBold(bold);
        page_.words << words;
        painter_.setFont(font);
        const QRectF box((x + paddingMm) * scale_, y_ * scale_, (width - 2 * paddingMm) * scale_, lineHeight * scale_);
        const QFontMetricsF metrics(font);
        painter_.drawText(box, flags | Qt::AlignVCenter | Qt::TextSingleLine,
                          metrics.elidedText(words, Qt::ElideRight, box.width()));
    }

    void rule(double weight)
    {
        painter_.setPen(QPen(ink_, weight * scale_));
        painter_.drawLine(QPointF(0, y_ * scale_), QPointF(width_ * scale_, y_ * scale_));
        painter_.setPen(ink_);
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
            const bool number = report_.sheet.columns[column].kind != Column::Kind::Text;
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
        // Laid out as on the screen, with as many dots as a printer shows.
        chart.grab();
        QImage picture(chart.size() * chartDots, QImage::Format_RGB32);
        picture.setDevicePixelRatio(chartDots);
        picture.fill(controls::colors(controls::Ground::Paper).back);
        QPainter strokes(&picture);
        strokes.setRenderHint(QPainter::Antialiasing);
        chart.render(&strokes, QRectF(QPointF(), chart.size()));
        strokes.end();
        painter_.drawImage(QRectF(0, y_ * scale_, width_ * scale_, chartHeight * scale_), picture);
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
        endPage();
        ++number_;
        beginPage();
        if (withCaptions)
            drawCaptions();
    }

    const PrintedReport &report_;
    print::Document document_;
    print::Drawing page_;
    QPainter painter_;
    const QColor ink_ = controls::colors(controls::Ground::Paper).text;
    const double scale_ = print::gridPerMm;
    double width_ = 0;
    double height_ = 0;
    double y_ = 0;
    int number_ = 1;
    std::vector<double> widths_;
};

} // namespace

print::Document sheetOnPaper(const PrintedReport &report)
{
    return Pen(report).draw();
}

} // namespace statistics
