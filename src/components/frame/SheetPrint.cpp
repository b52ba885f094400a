#include "components/frame/SheetPrint.h"

#include "components/frame/SheetChart.h"
#include "components/frame/SheetPen.h"
#include "components/frame/SheetRows.h"
#include "platform/controls/Appearance.h"
#include "platform/runtime/Format.h"

#include <QImage>

#include <algorithm>

namespace statistics {

namespace {

using print::Align;

// Millimetres.
constexpr double titleHeight = 7;
constexpr double textHeight = 4.2;
constexpr double between = 1.6;
constexpr double footHeight = 6;
constexpr double standingChart = 52;
constexpr double lyingBar = 8; // the name before it included
constexpr double aroundLyingBars = 16;
constexpr double chartDistance = 3;

constexpr double chartScreenDots = 4; ///< of a mm of paper
constexpr int chartDots = 3;          ///< of the paper for one of the screen

constexpr double smallPoints = 7.5;
constexpr double thick = 0.3;
constexpr double thin = 0.12;

/// Upright, or lying where the table is wide.
QSizeF paperOf(const Sheet &sheet)
{
    int width = 0;
    for (const Column &column : sheet.columns)
        width += column.width;
    return width > 720 && !sheet.isDense ? print::A4.transposed() : print::A4;
}

class SheetPrint
{
public:
    explicit SheetPrint(const PrintedReport &report)
        : report_(report)
        , sheet_(report.sheet)
        , pen_(paperOf(report.sheet))
        , bottom_(pen_.height() - footHeight)
    {
        about_ << report.period;
        if (!report.view.isEmpty())
            about_ << QStringLiteral("보기: ") + report.view;
    }

    print::Document draw()
    {
        constexpr double runningHead = textHeight + between;
        pen_.beginPage();
        drawHead();
        const SheetRows rows(sheet_, {pen_.width(), bottom_ - y_, bottom_ - runningHead});
        const double lastTop = rows.pageCount() == 1 ? y_ : runningHead;
        const bool chartFits = lastTop + rows.lastHeight() + chartDistance + chartHeight() <= bottom_;
        const bool hasChart = !sheet_.chart.categories.isEmpty() && (chartFits || !sheet_.isDense);
        pages_ = int(rows.pageCount()) + (hasChart && !chartFits ? 1 : 0);
        for (std::size_t page = 0; page < rows.pageCount(); ++page) {
            if (page > 0)
                turnPage();
            drawRows(rows, page);
        }
        drawTotals(rows);
        if (hasChart && !chartFits)
            turnPage();
        if (hasChart)
            drawChart();
        endPage();
        return pen_.document();
    }

private:
    void write(double x, double width, const QString &text, Align align = Align::Left, double points = smallPoints,
               bool bold = false, controls::Ink ink = controls::Ink::Plain)
    {
        pen_.write({text, {x, y_, width, textHeight}, sheetFont(points, bold), align}, ink);
    }

    void turnPage()
    {
        endPage();
        ++page_;
        pen_.beginPage();
        y_ = 0;
        write(0, pen_.width() * 0.7, (QStringList{report_.title} + about_).join(QStringLiteral("   ")));
        write(pen_.width() * 0.7, pen_.width() * 0.3, report_.shop, Align::Right);
        y_ += textHeight + between;
    }

    void endPage()
    {
        y_ = pen_.height() - textHeight;
        write(0, pen_.width(), QStringLiteral("인쇄: ") + runtime::dateTimeText(QDateTime::currentDateTime()));
        write(0, pen_.width(), QStringLiteral("%1 / %2쪽").arg(page_).arg(pages_), Align::Center);
        pen_.endPage();
    }

    void drawHead()
    {
        const double half = pen_.width() / 2;
        pen_.write({report_.title, {0, y_, half, titleHeight}, sheetFont(14, true)});
        pen_.write({report_.shop, {half, y_, half, titleHeight}, sheetFont(10, true), Align::Right});
        y_ += titleHeight;
        QStringList about = about_;
        if (!sheet_.rows.empty())
            about << shownText(runtime::Currency::fromWon(qint64(sheet_.rows.size()))) + QStringLiteral("행");
        write(0, pen_.width() * 0.8, about.join(QStringLiteral("   ")), Align::Left, 9);
        write(pen_.width() * 0.8, pen_.width() * 0.2, QStringLiteral("단위: 원"), Align::Right);
        y_ += textHeight + between / 2;
        const print::TextItem remark{sheet_.remark, {0, y_, pen_.width(), textHeight}, sheetFont(smallPoints)};
        const QStringList lines = linesInCell(remark, true);
        pen_.writeLines(remark, lines);
        y_ += textHeight * double(sheet_.remark.isEmpty() ? 0 : lines.size()) + between;
        drawSummary();
        if (report_.count)
            drawCount(*report_.count);
    }

    /// The groups side by side, as on the screen.
    void drawSummary()
    {
        const std::vector<SummaryLine> &lines = sheet_.summary;
        const auto begins = [&lines](std::size_t number) {
            return number == 0 || lines[number].group != lines[number - 1].group;
        };
        int groups = 0;
        for (std::size_t number = 0; number < lines.size(); ++number)
            groups += begins(number) ? 1 : 0;
        const double column = pen_.width() / std::max(1, groups);
        const double top = y_;
        double bottom = y_;
        double x = -column;
        for (std::size_t number = 0; number < lines.size(); ++number) {
            const SummaryLine &line = lines[number];
            if (begins(number)) {
                x += column;
                y_ = top;
                write(x, column, line.group, Align::Left, 8.5, true);
                y_ += textHeight;
            }
            writeAmount(x, column * 0.9, line.caption, shownText(line.amount) + line.unit, line.isResult,
                        inkOf(line.amount));
            bottom = std::max(bottom, y_);
        }
        y_ = lines.empty() ? y_ : bottom + between;
    }

    void writeAmount(double x, double width, const QString &caption, const QString &amount, bool bold,
                     controls::Ink ink)
    {
        write(x, width * 0.5, caption, Align::Left, smallPoints, bold);
        write(x + width * 0.4, width * 0.6, amount, Align::Right, smallPoints, bold,
              ink == controls::Ink::Negative ? ink : controls::Ink::Plain);
        y_ += textHeight;
    }

    /// What was counted; lines to write on where nothing was.
    void drawCount(const CashCount &count)
    {
        const double column = pen_.width() / 4;
        const double width = column * 0.9;
        write(0, pen_.width(), QStringLiteral("현금 시재 확인"), Align::Left, 8.5, true);
        y_ += textHeight;
        const double top = y_;
        for (std::size_t piece = 0; piece < CashCount::pieces.size(); ++piece) {
            if (piece == CashCount::pieces.size() / 2)
                y_ = top;
            drawPiece(count, piece, piece < CashCount::pieces.size() / 2 ? 0 : column, width);
        }
        y_ = top;
        const Cell difference = count.difference();
        const bool counted = count.isCounted();
        drawCounted(2 * column, width, QStringLiteral("시재 합계"), count.counted(), counted);
        drawCounted(2 * column, width, QStringLiteral("준비금"), count.opening, counted || count.opening != Sum());
        drawCounted(2 * column, width, QStringLiteral("현금 증감"), count.change, true);
        drawCounted(2 * column, width, QStringLiteral("차액"), difference, counted);
        y_ = top + textHeight;
        write(3 * column, width * 0.3, QStringLiteral("확인자"));
        write(3 * column, column, QStringLiteral("(서명)"), Align::Right);
        blank(3 * column + width * 0.25, width * 0.5);
        y_ = top + 3 * textHeight;
        write(3 * column, column, QStringLiteral("차액 = 시재 합계 − 준비금 − 현금 증감"), Align::Left, 6.5);
        y_ += textHeight + between;
    }

    void drawPiece(const CashCount &count, std::size_t piece, double x, double width)
    {
        const QString unit = CashCount::isNote(piece) ? QStringLiteral("장") : QStringLiteral("개");
        write(x, width * 0.3, shownText(runtime::Currency::fromWon(CashCount::pieces[piece])) + u'원', Align::Right);
        if (count.isCounted()) {
            write(x + width * 0.3, width * 0.3, QString::number(count.counts[piece].value_or(0)) + unit, Align::Right);
            write(x + width * 0.6, width * 0.4, shownText(count.amount(piece)), Align::Right);
        } else {
            blank(x + width * 0.34, width * 0.2);
            write(x + width * 0.5, width * 0.1, unit, Align::Right);
            blank(x + width * 0.64, width * 0.35);
        }
        y_ += textHeight;
    }

    void drawCounted(double x, double width, const QString &caption, const Cell &amount, bool isKnown)
    {
        if (!isKnown)
            blank(x + width * 0.5, width * 0.49);
        writeAmount(x, width, caption, isKnown ? shownText(amount) : QString(), true, inkOf(amount));
    }

    /// A line to write on.
    void blank(double x, double width) { pen_.rule(x, y_ + textHeight * 0.85, width, thin); }

    void drawRows(const SheetRows &rows, std::size_t page)
    {
        pen_.rule(0, y_, pen_.width(), thick);
        Row captions;
        for (const Column &column : sheet_.columns)
            captions.emplace_back(column.caption);
        drawRow(rows, captions, true);
        y_ += rows.lineHeight();
        for (std::size_t row = rows.firstRow(page); row < rows.endRow(page); ++row) {
            pen_.rule(0, y_, pen_.width(), thin, row > rows.firstRow(page));
            drawRow(rows, sheet_.rows[row], false);
            y_ += rows.heightOf(row);
        }
        pen_.rule(0, y_, pen_.width(), thin);
    }

    void drawTotals(const SheetRows &rows)
    {
        if (sheet_.totals.empty())
            return;
        drawRow(rows, sheet_.totals, true);
        y_ += rows.lineHeight();
        pen_.rule(0, y_, pen_.width(), thick);
    }

    void drawRow(const SheetRows &rows, const Row &row, bool bold)
    {
        double x = 0;
        for (std::size_t column = 0; column < row.size(); ++column) {
            const bool isText = sheet_.columns[column].kind == Column::Kind::Text;
            const print::TextItem item{shownText(row[column]),
                                       {x, y_, rows.columnWidth(column), rows.lineHeight()},
                                       sheetFont(rows.points(), bold),
                                       isText ? Align::Left : Align::Right};
            pen_.writeLines(item, linesInCell(item, isText && !bold), inkOf(row[column]));
            x += rows.columnWidth(column);
        }
    }

    double chartHeight() const
    {
        return sheet_.chart.lying ? lyingBar * double(sheet_.chart.categories.size()) + aroundLyingBars : standingChart;
    }

    void drawChart()
    {
        y_ += chartDistance;
        SheetChart chart;
        chart.resize(int(pen_.width() * chartScreenDots), int(chartHeight() * chartScreenDots));
        chart.chart()->setAnimationOptions(QChart::NoAnimation);
        chart.keepLight();
        chart.setPlan(sheet_.chart);
        // Laid out as on the screen, with as many dots as a printer shows.
        chart.grab();
        QImage picture(chart.size() * chartDots, QImage::Format_RGB32);
        picture.setDevicePixelRatio(chartDots);
        picture.fill(controls::colors(controls::Ground::Paper).back);
        QPainter strokes(&picture);
        strokes.setRenderHint(QPainter::Antialiasing);
        chart.render(&strokes, QRectF(QPointF(), chart.size()));
        strokes.end();
        pen_.picture({0, y_, pen_.width(), chartHeight()}, picture);
        y_ += chartHeight();
    }

    const PrintedReport &report_;
    const Sheet &sheet_;
    SheetPen pen_;
    QStringList about_; ///< what the figures are of
    double bottom_;
    double y_ = 0;
    int page_ = 1;
    int pages_ = 1;
};

} // namespace

print::Document sheetOnPaper(const PrintedReport &report)
{
    return SheetPrint(report).draw();
}

} // namespace statistics
