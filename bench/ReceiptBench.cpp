#include "bench/ReceiptBench.h"

#include "bench/SaleWindow.h"
#include "bench/TypicalPatients.h"
#include "platform/print/Lengths.h"
#include "printing/PageReceipt.h"

#include <QAbstractButton>
#include <QApplication>
#include <QTimer>
#include <QWindow>

#include <chrono>

namespace bench {

namespace {

constexpr double Dots = 96; ///< of an inch

const std::string previewName = "receipt/preview";

std::string layoutName(int lines)
{
    return "receipt/layout/" + std::to_string(lines);
}

print::Document composed(int lines)
{
    const QString dashes(68, QLatin1Char('-'));
    PageReceipt page({.columnWidths = {u"2.9cm", u"2.9cm", u"2.9cm", u"2.9cm", u"2.9cm", u"2.9cm"},
                      .headDashes = dashes,
                      .moneyDashes = dashes,
                      .nameColumn = 1,
                      .moneyLabel = 1,
                      .customerSpan = 6});
    page.addHead(QStringLiteral("김가온님 (구매날짜:2026-11-24)"));
    receipt::Line line;
    line.category = QStringLiteral("*한방차");
    line.kind = QStringLiteral("일반판매");
    line.curUnit = runtime::Currency::fromWon(12'000);
    line.intCount = 2;
    for (int number = 1; number <= lines; ++number) {
        line.intItem = qint16(number);
        line.name = QStringLiteral("감초생강차 %1호").arg(number % 97);
        page.addLine(line);
    }
    page.addMoneyRows({});
    return page.take();
}

/// The whole receipt: rows put on pages, texts fitted into their boxes, pages drawn.
void layOut(benchmark::State &state, int lines)
{
    QImage sheet((print::A4 * (Dots / print::mmPerInch)).toSize(), QImage::Format_RGB32);
    for (auto _ : state) {
        const print::Document receipt = composed(lines);
        for (const print::Page &page : receipt.pages()) {
            sheet.fill(Qt::white);
            QPainter painter(&sheet);
            print::drawPage(painter, page, Dots);
        }
        benchmark::DoNotOptimize(sheet.constBits());
    }
}

/// From the click on the button until nothing of the preview is painted any more.
double secondsToPreview(QAbstractButton &button)
{
    using Clock = std::chrono::steady_clock;
    Clock::time_point painted;
    QTimer atPreview;
    QObject::connect(&atPreview, &QTimer::timeout, &atPreview, [&] {
        QWidget *preview = QApplication::activeModalWidget();
        if (!preview || !preview->windowHandle() || !preview->windowHandle()->isExposed())
            return;
        atPreview.stop();
        untilPainted();
        painted = Clock::now();
        preview->close();
    });
    atPreview.start(0);
    const Clock::time_point pressed = Clock::now();
    button.click();
    return std::chrono::duration<double>(painted - pressed).count();
}

void previews(benchmark::State &state, const ado::ConnectionPtr &connection, const LongOrder &order)
{
    SaleWindow window(connection);
    window.open(order.patient);
    ado::Recordset &orders = *window.grid("tdbCustSaleMaster").dataSource();
    for (orders.MoveFirst(); orders[QStringLiteral("OrdM_PK")].toInt() != order.lngOrdMPK;)
        orders.MoveNext();
    auto &button = window.control<QAbstractButton>("chkCmdPrintReceipt_0");
    for (auto _ : state)
        state.SetIterationTime(secondsToPreview(button));
}

} // namespace

void registerReceipts(const Clinics &clinics, Table &table)
{
    const LongOrder order = longOrder(*clinics.large);
    benchmark::RegisterBenchmark(
        previewName.c_str(),
        [connection = clinics.large, order](benchmark::State &state) { previews(state, connection, order); })
        ->UseManualTime()
        ->Iterations(5);
    table.add({"preview of a receipt of 200 lines, painted", previewName, {}, 300});

    for (const int lines : {200, 1'000, 10'000})
        benchmark::RegisterBenchmark(layoutName(lines).c_str(),
                                     [lines](benchmark::State &state) { layOut(state, lines); });
    table.add({"a receipt of 200 lines composed, all pages drawn", layoutName(200), {}, 0});
    // Ten times the lines, ten times the work.
    table.add({"the same of 10,000 lines, against 1,000", layoutName(10'000), layoutName(1'000), 12});
}

} // namespace bench
