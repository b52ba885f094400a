#include "tests/support/Paper.h"
#include "components/VantoOneDay/OneDayReport.h"
#include "components/VantoPayPeriod/PayPeriodReport.h"
#include "components/VantoSalesItem/SalesItemReport.h"
#include "components/VantoSalesPeriod/SalesPeriodReport.h"
#include "components/frame/CashCountBox.h"
#include "components/frame/PeriodBar.h"
#include "components/frame/ReportWindow.h"
#include "components/frame/SheetChart.h"
#include "components/frame/SheetPrint.h"
#include "components/frame/SheetView.h"
#include "platform/controls/LargeFigure.h"
#include "platform/print/PreviewWindow.h"
#include "tests/components/SampleRows.h"
#include "tests/support/DialogDriver.h"

#include <QComboBox>
#include <QPainter>
#include <QScrollBar>
#include <QTableView>
#include <QtCharts/QAbstractBarSeries>
#include <QtCharts/QBarSet>
#include <QtCharts/QCategoryAxis>
#include <QtCharts/QLegend>
#include <QtCharts/QLegendMarker>
#include <QtCharts/QLineSeries>

using namespace statistics;

namespace {

const QString largeAmount = QStringLiteral("1,234,567,890");

runtime::Currency won(qint64 amount)
{
    return runtime::Currency::fromWon(amount);
}

/// The sheet of a report on which each number has ten digits.
Sheet largeSheet(const Report &report, int rows)
{
    Sheet sheet = report.sheet(0);
    Row totals;
    for (const Column &column : sheet.columns)
        totals.push_back(column.kind == Column::Kind::Text ? Cell(QStringLiteral("당일")) : Cell(won(1'234'567'890)));
    for (int row = 1; row <= rows; ++row) {
        sheet.rows.push_back(totals);
        sheet.rows.back()[0] = QStringLiteral("%1번").arg(row);
    }
    totals[0] = QStringLiteral("합계");
    sheet.totals = totals;
    return sheet;
}

PrintedReport evening(int orders)
{
    const OneDayReport report;
    PrintedReport printed{report.title(), QStringLiteral("2026-11-26"), largeSheet(report, orders)};
    printed.count = CashCount{.day = QDate(2026, 11, 26), .change = won(1'234'567'890)};
    return printed;
}

QImage pictureOf(const print::Document &pages)
{
    constexpr int dots = 4; // of a mm
    QImage picture((pages.paper() * dots).toSize(), QImage::Format_RGB32);
    picture.fill(controls::colors(controls::Ground::Paper).back);
    QPainter painter(&picture);
    print::drawPage(painter, pages.pages().back(), dots * print::mmPerInch);
    return picture.copy(0, 0, picture.width(), picture.height() - 16 * dots); // without the time below
}

/// Of each bar of a lying chart, from above, whether something is written before it.
std::vector<bool> namesBeforeBars(const QImage &page)
{
    const QRgb color = controls::seriesColor(0, controls::Scheme::Light).rgb();
    constexpr int axis = 10; // dots
    std::vector<bool> bars;
    bool within = false;
    for (int y = 0; y < page.height(); ++y) {
        int start = 0;
        while (start < page.width() && page.pixel(start, y) != color)
            ++start;
        if (start < page.width() && !within)
            bars.push_back(false);
        within = start < page.width();
        for (int x = 0; within && x < start - axis; ++x)
            bars.back() = bars.back() || qGray(page.pixel(x, y)) < 128;
    }
    return bars;
}

void waitUntilRead(const ReportWindow &window)
{
    ASSERT_TRUE(QTest::qWaitFor([&window] { return !window.isReading(); }, 10'000));
}

/// What stands on the pages that the window's print button shows.
QStringList printedBy(const ReportWindow &window)
{
    QStringList words;
    inDialog([&] { window.findChild<QPushButton *>("cmdPrint")->click(); },
             [&words](const DialogDriver &form) {
                 auto *preview = qobject_cast<print::PreviewWindow *>(form.window());
                 ASSERT_TRUE(preview);
                 for (const print::Page &page : preview->vsPrint()->document().pages())
                     words += page.drawing.words;
             });
    return words;
}

} // namespace

TEST(SheetsOnPaper, HoldAnEveningOfSixtyOrdersOnOnePageWithEachDigit)
{
    const struct
    {
        int orders;
        int pages;
    } cases[] = {{1, 1}, {60, 1}, {61, 2}, {120, 2}, {200, 4}};
    for (const auto &[orders, pages] : cases) {
        SCOPED_TRACE(orders);
        const Paper paper = Paper::of(sheetOnPaper(evening(orders)));
        EXPECT_EQ(paper.sheets().size(), pages);
        EXPECT_LT(paper.sheets().constFirst().width(), paper.sheets().constFirst().height()) << "upright";
        EXPECT_EQ(paper.overlaps(), QStringList());
        for (int row = 1; row <= orders; ++row)
            EXPECT_NO_THROW(paper.word(QStringLiteral("%1번").arg(row)));
        const auto amounts = std::count_if(paper.words().begin(), paper.words().end(),
                                           [](const Paper::Word &word) { return word.text == largeAmount; });
        EXPECT_EQ(amounts, (orders + 1) * 10 + 1) << "and the cash that the drawer is counted against";
        EXPECT_TRUE(paper.has(QStringLiteral("%1쪽").arg(pages)));
    }
}

TEST(SheetsOnPaper, EndWithTotalsThatHaveRowsAboveThem)
{
    for (const bool dense : {false, true}) {
        for (int rows = 38; rows < 64; ++rows) {
            PrintedReport report = evening(rows);
            report.sheet.isDense = dense;
            report.sheet.chart = {};
            const QStringList last = sheetOnPaper(report).pages().back().drawing.words;
            EXPECT_TRUE(last.contains(QStringLiteral("합계"))) << rows;
            EXPECT_TRUE(last.contains(QStringLiteral("%1번").arg(std::max(1, rows - 2)))) << rows;
        }
    }
}

TEST(SheetsOnPaper, BreakLongNamesAndKeepEachPageAsTallAsItsRows)
{
    Sheet sheet;
    sheet.columns = {{QStringLiteral("물품명"), Column::Kind::Text}, {QStringLiteral("금액")}};
    QStringList name;
    for (int word = 0; word < 60; ++word)
        name << QStringLiteral("고농축홍삼");
    for (int row = 0; row < 30; ++row)
        sheet.rows.push_back({name.join(u' ') + QStringLiteral(" 끝%1").arg(row), won(1'234'567'890)});
    const Paper paper = Paper::of(sheetOnPaper({QStringLiteral("통계"), QStringLiteral("2026"), sheet}));
    EXPECT_GT(paper.sheets().size(), 1);
    EXPECT_EQ(paper.overlaps(), QStringList());
    for (int row = 0; row < 30; ++row)
        EXPECT_LT(paper.word(QStringLiteral("끝%1").arg(row)).box.bottom(), paper.sheets().constFirst().height() - 15);
}

TEST(SheetsOnPaper, NameEachBarOfALyingChart)
{
    SalesItemReport report;
    PrintedReport printed{report.title(), QStringLiteral("2026-06"),
                          samplerows::read(report, ado::Engine::SQLite, monthOf(samplerows::lastDay))};
    printed.sheet.rows.resize(1);
    EXPECT_EQ(namesBeforeBars(pictureOf(sheetOnPaper(printed))), std::vector<bool>(10, true));
}

TEST(SheetsOnPaper, AreWhiteOnADarkDesktop)
{
    const auto pages = [] {
        PrintedReport report = evening(3);
        report.sheet.summary[0].amount = won(-1);
        return pictureOf(sheetOnPaper(report));
    };
    const QImage light = pages();
    const QPalette desk = QApplication::palette();
    QApplication::setPalette(controls::deskPalette(controls::Scheme::Dark));
    const QImage dark = pages();
    QApplication::setPalette(desk);
    EXPECT_EQ(dark, light);
    int red = 0; // dots
    for (int y = 0; y < light.height(); ++y)
        for (int x = 0; x < light.width(); ++x)
            red += qRed(light.pixel(x, y)) - qGreen(light.pixel(x, y)) > 120 ? 1 : 0;
    EXPECT_GT(red, 0) << "money that went out";
}

TEST(SheetsOnPaper, SayWhatTheirWindowSays)
{
    ReportWindow window(std::make_unique<SalesPeriodReport>(), samplerows::clinic(ado::Engine::SQLite).connection());
    window.show();
    waitUntilRead(window);
    window.findChild<QComboBox *>("cboView")->setCurrentIndex(1);
    const QStringList words = printedBy(window);
    for (const QString &text : {QStringLiteral("기간별 매출 통계"), QStringLiteral("푸른솔한의원"),
                                QStringLiteral("2026-06-01 ~ 2026-06-30   보기: 주별   5행"), window.sheet().remark,
                                QStringLiteral("1 / 1쪽"), QStringLiteral("합계")})
        EXPECT_TRUE(words.contains(text)) << text.toStdString() << " not in " << words.join(u'\n').toStdString();
}

TEST(CashCounts, CompareTheDrawerToTheDaysCashOnScreenAndPaper)
{
    TestDatabase &clinic = samplerows::clinic(ado::Engine::SQLite);
    auto window = std::make_unique<ReportWindow>(std::make_unique<OneDayReport>(), clinic.connection());
    window->show();
    waitUntilRead(*window);
    const qint64 change = Sum::of(*window->sheet().cashChange).orZero().toWon();
    const auto type = [&window](const char *field, const char *text) {
        auto *box = window->findChild<QLineEdit *>(field);
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, text);
        QTest::keyClick(box, Qt::Key_Return);
    };
    const auto text = [&window](const char *label) { return window->findChild<QLabel *>(label)->text().toStdString(); };
    EXPECT_EQ(text("lblDifference"), "") << "nothing is counted";
    type("txtOpening", "100000");
    type("txtPieces_0", "3");
    type("txtPieces_7", "12");
    const std::string difference = shownText(won(150'120 - 100'000 - change)).toStdString();
    EXPECT_EQ(text("lblCounted"), "150,120");
    EXPECT_EQ(text("lblDifference"), difference);
    const QStringList words = printedBy(*window);
    for (const char *printed : {"3장", "150,000", "12개", "120", "150,120", "100,000", difference.c_str(), "(서명)"})
        EXPECT_TRUE(words.contains(QString::fromUtf8(printed))) << printed;

    // A customer comes between.
    window = std::make_unique<ReportWindow>(std::make_unique<OneDayReport>(), clinic.connection());
    window->show();
    waitUntilRead(*window);
    EXPECT_EQ(text("lblDifference"), difference);
    window->findChild<PeriodBar *>()->choose(dayOf(samplerows::lastDay.addDays(-1)));
    ASSERT_TRUE(QTest::qWaitFor([&] { return text("lblCounted").empty(); }));
    EXPECT_EQ(window->findChild<QLineEdit *>("txtOpening")->text(), QStringLiteral("100,000"));
    EXPECT_FALSE(printedBy(*window).contains(QStringLiteral("3장")));
}

TEST(Chart, BreaksItsLinesOnDaysWithoutARowAndShowsWhatGoesOutRed)
{
    Chart plan;
    plan.title = QStringLiteral("수납");
    plan.series = {{QStringLiteral("현금"), {}}, {QStringLiteral("환불"), {}}};
    for (int day = 0; day < 360; ++day) {
        if (day % 10 == 9 || day == 11 || (day > 199 && day < 350)) // a lone day 10, and a long silence
            continue;
        plan.categories << QString::number(day);
        plan.places.push_back(day);
        plan.series[0].values.push_back(won(day));
        plan.series[1].values.push_back(won(day % 3 - 2));
    }
    SheetChart chart;
    chart.resize(600, 300);
    chart.show();
    chart.setPlan(plan);
    int pieces = 0;
    for (QAbstractSeries *series : chart.chart()->series()) {
        const QList<QPointF> points = static_cast<QLineSeries *>(series)->points();
        for (qsizetype point = 1; point < points.size(); ++point)
            EXPECT_EQ(points[point].x(), points[point - 1].x() + 1) << series->name().toStdString();
        EXPECT_EQ(static_cast<QLineSeries *>(series)->color() == controls::ink(controls::Ink::Negative),
                  series->name() == QStringLiteral("환불"));
        pieces += series->name() == QStringLiteral("현금") ? 1 : 0;
    }
    EXPECT_EQ(pieces, 22);
    QTest::qWait(50);
    int marked = 0;
    for (const QLegendMarker *marker : chart.chart()->legend()->markers())
        marked += marker->isVisible() ? 1 : 0;
    EXPECT_EQ(marked, 2);
    auto *days = static_cast<QCategoryAxis *>(chart.chart()->axes(Qt::Horizontal).constFirst());
    QList<double> captions;
    for (const QString &caption : days->categoriesLabels())
        captions << days->endValue(caption);
    ASSERT_GT(captions.size(), 8);
    for (qsizetype caption = 1; caption < captions.size(); ++caption)
        EXPECT_GE(captions[caption] - captions[caption - 1], 360 / 16) << "written into one another";

    plan.categories = {QStringLiteral("가"), QStringLiteral("나")};
    plan.places = {};
    plan.series[0].values = {won(5), won(-5)};
    plan.series[1].values = {won(0), won(-5)};
    chart.setPlan(plan);
    const QList<QBarSet *> sets = static_cast<QAbstractBarSeries *>(chart.chart()->series().constFirst())->barSets();
    const QColor red = controls::ink(controls::Ink::Negative);
    EXPECT_NE(sets[0]->color(), red) << "for the legend";
    EXPECT_EQ(sets[0]->selectedColor(), red);
    EXPECT_EQ(sets[0]->selectedBars(), QList<int>{1});
    EXPECT_EQ(sets[1]->color(), red);
}

TEST(Table, OfPaymentsFitsASmallWindowWithEachDigit)
{
    SheetView view;
    view.setSheet(largeSheet(PayPeriodReport(), 3));
    view.resize(1150 - 180, 400); // beside the tree of reports
    view.show();
    auto *table = view.findChild<QTableView *>("tblReport");
    auto *totals = view.findChild<QTableView *>("tblTotals");
    EXPECT_EQ(table->horizontalScrollBar()->maximum(), 0);
    for (int column = 1; column < table->model()->columnCount(); ++column) {
        const int room = table->columnWidth(column) - 8;
        EXPECT_LE(
            QFontMetrics(controls::fontThatFits(totals->font(), largeAmount, room)).horizontalAdvance(largeAmount),
            room);
    }
    table->setColumnWidth(1, 300);
    view.resize(1300, 400);
    EXPECT_EQ(table->columnWidth(1), 300) << "as the user dragged it";
}
