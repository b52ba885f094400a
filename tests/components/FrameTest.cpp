#include "components/VantoSalesPeriod/clsVantoSalesPeriod.h"
#include "components/frame/CsvFile.h"
#include "components/frame/ReportWindow.h"
#include "components/frame/SheetChart.h"
#include "platform/print/PreviewWindow.h"
#include "platform/runtime/RuntimeError.h"
#include "tests/components/SampleRows.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/MessageRecorder.h"
#include "tests/support/PostgresServer.h"

#include <QApplication>
#include <QComboBox>
#include <QDateEdit>
#include <QDesktopServices>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QTableView>
#include <QTest>
#include <QThread>
#include <QtCharts/QAbstractBarSeries>
#include <QtCharts/QBarSet>
#include <QtCharts/QLineSeries>

using namespace statistics;

namespace {

/// A report of one figure over the lines' keys, each row of which takes its time.
class SlowReport : public Report
{
public:
    explicit SlowReport(QString statement)
        : statement_(std::move(statement))
    {
    }
    QString title() const override { return QStringLiteral("느린 통계"); }
    std::vector<Figure> figures(const Period &) override
    {
        Figure figure{statement_, Figure::Slices::Days};
        figure.take = [](const Record &) { QThread::msleep(10); };
        return {figure};
    }

private:
    Sheet makeSheet(int) const override
    {
        Sheet sheet;
        sheet.columns = {{QStringLiteral("가"), Column::Kind::Text}};
        sheet.rows = {{QStringLiteral("다 읽음")}};
        return sheet;
    }

    QString statement_;
};

class Window : public testing::Test
{
protected:
    ReportWindow &open(const QString &statement)
    {
        window_ = std::make_unique<ReportWindow>(std::make_unique<SlowReport>(statement),
                                                 samplerows::clinic(ado::Engine::SQLite).connection());
        window_->show();
        return *window_;
    }
    template <typename Control>
    Control *control(const char *name) const
    {
        return window_->findChild<Control *>(QLatin1String(name));
    }
    QString state() const { return control<QLabel>("lblState")->text(); }
    int rows() const { return control<QTableView>("tblReport")->model()->rowCount(); }
    bool waitFor(const std::function<bool()> &condition) const { return QTest::qWaitFor(condition, 10'000); }
    bool readToItsEnd() const
    {
        return waitFor([this] { return !window_->isReading(); });
    }

    /// Clicks the button and works in the dialog that comes; whether one came.
    template <typename Dialog>
    bool inDialog(const char *button, const std::function<void(Dialog &)> &work) const
    {
        return ::inDialog([&] { QTest::mouseClick(control<QPushButton>(button), Qt::LeftButton); },
                          [&](const DialogDriver &form) {
                              auto *dialog = qobject_cast<Dialog *>(form.window());
                              ASSERT_TRUE(dialog);
                              work(*dialog);
                          });
    }

    std::unique_ptr<ReportWindow> window_;
};

/// Stands for the desktop's programs.
class FileOpener : public QObject
{
    Q_OBJECT
public:
    FileOpener() { QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "open"); }
    ~FileOpener() override { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }
    Q_INVOKABLE void open(const QUrl &url) { opened = url; }
    QUrl opened;
};

const QString ordersOfADay =
    QStringLiteral("SELECT OrdM_PK FROM tPSOrderMaster WHERE OrdM_Date BETWEEN '[FROM]' AND '[TO]'");

} // namespace

TEST(Csv, KeepsNumbersExactCodesAndKoreanAndDisarmsFormulas)
{
    const struct
    {
        Cell cell;
        const char *written;
    } cases[] = {
        {runtime::Currency::fromWon(922337203685477), "922337203685477"},
        {runtime::Currency::fromWon(-1500), "-1500"},
        {runtime::Currency::fromScaled(12'5000), "12.5"},
        {Cell(), ""},
        {QStringLiteral("6\" 붕대, 큰 것"), "\"6\"\" 붕대, 큰 것\""},
        {QStringLiteral("두\n줄"), "\"두\n줄\""},
        // What a spreadsheet would take for a formula.
        {QStringLiteral("=1+1"), "'=1+1"},
        {QStringLiteral("+82"), "'+82"},
        {QStringLiteral("-1+2"), "'-1+2"},
        {QStringLiteral("@SUM(A1)"), "'@SUM(A1)"},
        {QStringLiteral("\t1"), "'\t1"},
        {QStringLiteral("\r=1"), "\"'\r=1\""},
        {QStringLiteral("  =1"), "'  =1"},
        {QStringLiteral("＝1"), "'＝1"},
        {QStringLiteral("'=1"), "''=1"},
        {QStringLiteral("=\"1\""), "\"'=\"\"1\"\"\""},
        // For a number, a day or a power of ten.
        {QStringLiteral("00012"), "\"=\"\"00012\"\"\""},
        {QStringLiteral("8801234567890"), "\"=\"\"8801234567890\"\"\""},
        {QStringLiteral("12-3"), "\"=\"\"12-3\"\"\""},
        {QStringLiteral("1E5"), "\"=\"\"1E5\"\"\""},
        {QStringLiteral("2026-06-01"), "2026-06-01"},
        {QStringLiteral("2026-06-01 (월)"), "2026-06-01 (월)"},
    };
    Sheet sheet;
    sheet.summary = {{QStringLiteral("매출"), QStringLiteral("순매출"), runtime::Currency::fromWon(-1500)}};
    sheet.columns = {{QStringLiteral("물품, 이름"), Column::Kind::Text}};
    std::string rows;
    for (const auto &one : cases) {
        sheet.rows.push_back({one.cell});
        rows += one.written + std::string("\r\n");
    }
    sheet.totals = {QStringLiteral("합계")};
    EXPECT_EQ(csvOf(QStringLiteral("통계"), QStringLiteral("2026-06"), sheet, sheet.rows).toStdString(),
              "\xEF\xBB\xBF통계,\"=\"\"2026-06\"\"\"\r\n매출,순매출,-1500\r\n\r\n\"물품, 이름\"\r\n" + rows
                  + "합계\r\n");
    EXPECT_EQ(shownText(cases[2].cell).toStdString(), "12.5");
    EXPECT_EQ(shownText(cases[0].cell).toStdString(), "922,337,203,685,477");
}

TEST(Periods, OfTheYearBeforeEndWithTheirMonthAndManyMonthsBeginWithOneForAllEarlier)
{
    const auto year = [](QDate first, QDate last) { return yearBefore({first, last}).text().toStdString(); };
    EXPECT_EQ(year({2025, 2, 1}, {2025, 2, 28}), "2024-02-01 ~ 2024-02-29");
    EXPECT_EQ(year({2024, 2, 29}, {2024, 2, 29}), "2023-02-28");
    EXPECT_EQ(year({2026, 3, 5}, {2026, 6, 29}), "2025-03-05 ~ 2025-06-29");
    const auto months = [](std::size_t most) {
        std::string all;
        for (const Period &month : monthsOf({{2025, 11, 20}, {2026, 2, 3}}, most))
            all += month.text().toStdString() + '/';
        return all;
    };
    EXPECT_EQ(months(4), "2025-11-20 ~ 2025-11-30/2025-12-01 ~ 2025-12-31/2026-01-01 ~ 2026-01-31/"
                         "2026-02-01 ~ 2026-02-03/");
    EXPECT_EQ(months(2), "2025-11-20 ~ 2026-01-31/2026-02-01 ~ 2026-02-03/");
}

TEST(Sums, AreUnknownOnceAnythingOfThemIs)
{
    const Sum most = runtime::Currency::fromScaled(std::numeric_limits<std::int64_t>::max());
    const Sum won = runtime::Currency::fromWon(1);
    const struct
    {
        const char *what;
        Sum sum;
        std::string shown;
    } cases[] = {
        {"known", won - won * 3, "-2"},
        {"too much", most + won, "?"},
        {"too little", -most - won, "?"},
        {"too many", won * 1'000'000'000'000'000, "?"},
        {"unknown less itself", Sum::unknown() - Sum::unknown(), "?"},
        {"an unknown one is not below zero", Sum::unknown().notBelowZero(), "?"},
        {"below zero", (-won).notBelowZero(), "0"},
    };
    for (const auto &entry : cases)
        EXPECT_EQ(plainText(entry.sum).toStdString(), entry.shown) << entry.what;
}

TEST(StatStart, GivesTheWindowBeforeAnythingIsRead)
{
    clsVantoSalesPeriod component;
    ado::ConnectionPtr connection = samplerows::clinic(ado::Engine::SQLite).connection();
    const int handle = component.StatStart(connection);
    const std::unique_ptr<QWidget> window(QWidget::find(WId(handle)));
    ASSERT_TRUE(window);
    EXPECT_TRUE(window->property("reading").toBool());
    EXPECT_EQ(window->findChild<QTableView *>("tblReport")->model()->rowCount(), 0);

    ASSERT_TRUE(QTest::qWaitFor([&] { return !window->property("reading").toBool(); }, 10'000));
    // The shop's last month, since nothing was sold in the one of today.
    EXPECT_EQ(window->findChild<QDateEdit *>("dtpFirst")->date(), QDate(2026, 6, 1));
    EXPECT_EQ(window->findChild<QDateEdit *>("dtpLast")->date(), QDate(2026, 6, 30));
    EXPECT_GT(window->findChild<QTableView *>("tblReport")->model()->rowCount(), 10);

    connection.reset();
    EXPECT_THROW(component.StatStart(connection), runtime::RuntimeError);
}

TEST_F(Window, StaysAliveAndShowsItsProgressWhileItReads)
{
    ReportWindow &window = open(ordersOfADay);
    ASSERT_TRUE(readToItsEnd());
    EXPECT_EQ(rows(), 1);
    EXPECT_FALSE(control<QWidget>("cmdCancel")->isVisible());

    control<QDateEdit>("dtpFirst")->setDate(samplerows::firstDay); // some 300 orders, 3 s
    ASSERT_TRUE(waitFor([&] { return window.isReading(); }));
    QElapsedTimer begun;
    begun.start();
    int turns = 0;
    QTimer other;
    QObject::connect(&other, &QTimer::timeout, [&turns] { ++turns; });
    other.start(0);
    ASSERT_TRUE(waitFor([&] { return control<QWidget>("prgReading")->isVisible(); }));
    EXPECT_GE(begun.elapsed(), 400);
    EXPECT_LT(begun.elapsed(), 1500);
    EXPECT_GT(turns, 3);
    EXPECT_TRUE(window.isReading());

    QTest::mouseClick(control<QPushButton>("cmdCancel"), Qt::LeftButton);
    EXPECT_FALSE(window.isReading());
    EXPECT_FALSE(control<QWidget>("prgReading")->isVisible());
    EXPECT_EQ(rows(), 0); // what stood there belonged to other days
    EXPECT_TRUE(state().contains("중지"));
    EXPECT_FALSE(control<QPushButton>("cmdCsv")->isEnabled());
}

TEST_F(Window, MayBeDestroyedWhileItReads)
{
    open(ordersOfADay);
    ASSERT_TRUE(readToItsEnd());
    control<QDateEdit>("dtpFirst")->setDate(samplerows::firstDay);
    ASSERT_TRUE(waitFor([&] { return window_->isReading(); }));
    window_.reset();
    QTest::qWait(50);
}

TEST_F(Window, TellsWhyItCannotRead)
{
    open(QStringLiteral("SELECT * FROM nowhere"));
    ASSERT_TRUE(readToItsEnd());
    EXPECT_TRUE(state().startsWith("통계를 가져오지 못했습니다: ")) << state().toStdString();
    EXPECT_EQ(rows(), 0);

    open(ordersOfADay);
    ASSERT_TRUE(readToItsEnd());
    control<QDateEdit>("dtpFirst")->setDate(QDate(2026, 7, 1));
    ASSERT_TRUE(waitFor([&] { return rows() == 0; }));
    EXPECT_EQ(state(), QStringLiteral("시작일이 종료일보다 늦습니다."));
}

TEST(Readings, EndWithTheServerAndCountNothingThatWasNotRead)
{
    TestDatabase &clinic = samplerows::clinic(ado::Engine::PostgreSQL);
    ReportWindow window(std::make_unique<SalesPeriodReport>(), clinic.connection());
    window.show();
    const auto readToItsEnd = [&] { return QTest::qWaitFor([&] { return !window.isReading(); }, 20'000); };
    ASSERT_TRUE(readToItsEnd());
    const auto rows = window.sheet().rows.size();
    EXPECT_GT(rows, 10u);

    PostgresServer::instance().stop();
    QTest::mouseClick(window.findChild<QPushButton *>("cmdRead"), Qt::LeftButton);
    EXPECT_TRUE(readToItsEnd());
    const QString state = window.findChild<QLabel *>("lblState")->text();
    EXPECT_TRUE(state.startsWith("통계를 가져오지 못했습니다: ")) << state.toStdString();
    EXPECT_TRUE(window.sheet().totals.empty());

    PostgresServer::instance().start();
    QTest::qWait(1100); // a desk does not ask a dead server more than once a second
    QTest::mouseClick(window.findChild<QPushButton *>("cmdRead"), Qt::LeftButton);
    EXPECT_TRUE(readToItsEnd());
    EXPECT_EQ(window.sheet().rows.size(), rows) << window.findChild<QLabel *>("lblState")->text().toStdString();
    samplerows::forgetClinics();
}

TEST_F(Window, SavesItsTableWhereTheUserSays)
{
    open(ordersOfADay);
    ASSERT_TRUE(readToItsEnd());
    const QTemporaryDir folder;
    const QByteArray home = qgetenv("HOME");
    qputenv("HOME", folder.path().toLocal8Bit());
    QDir(folder.path()).mkdir("Documents");
    const auto saveAs = [&](const QString &name) {
        return inDialog<QFileDialog>("cmdCsv", [&](QFileDialog &dialog) {
            EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Excel용 저장"));
            EXPECT_EQ(dialog.selectedFiles().value(0).toStdString(),
                      folder.filePath("Documents/느린 통계 2026-06-01 ~ 2026-06-30.csv").toStdString());
            dialog.findChild<QLineEdit *>("fileNameEdit")->setText(folder.filePath(name));
            QMetaObject::invokeMethod(&dialog, "accept");
        });
    };
    const MessageRecorder boxes;
    EXPECT_TRUE(saveAs(QStringLiteral("통계 6월")));
    QFile file(folder.filePath("통계 6월.csv"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll().toStdString(), "\xEF\xBB\xBF느린 통계,2026-06-01 ~ 2026-06-30\r\n\r\n가\r\n다 읽음\r\n");
    EXPECT_TRUE(boxes.messages.isEmpty());
    EXPECT_TRUE(control<QLabel>("lblSaved")->toolTip().endsWith(QStringLiteral("통계 6월.csv")));
    FileOpener opener;
    QTest::mouseClick(control<QPushButton>("cmdOpen"), Qt::LeftButton);
    EXPECT_EQ(opener.opened, QUrl::fromLocalFile(file.fileName()));

    EXPECT_TRUE(inDialog<QFileDialog>("cmdCsv", [](QFileDialog &dialog) { dialog.reject(); }));
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 1);
    EXPECT_TRUE(boxes.messages.isEmpty());

    saveAs(QStringLiteral("nowhere/taken"));
    qputenv("HOME", home);
    ASSERT_EQ(boxes.messages.size(), 1);
    EXPECT_TRUE(boxes.messages[0].text.startsWith("파일을 저장하지 못했습니다: "))
        << boxes.messages[0].text.toStdString();
}

TEST_F(Window, ShowsItsPagesBeforeItPrints)
{
    open(ordersOfADay);
    ASSERT_TRUE(readToItsEnd());
    const bool shown = inDialog<print::PreviewWindow>("cmdPrint", [](print::PreviewWindow &dialog) {
        const print::Document &pages = dialog.vsPrint()->document();
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("느린 통계 인쇄"));
        EXPECT_EQ(pages.pageCount(), 1);
        EXPECT_EQ(pages.paper(), print::A4) << "upright";
        EXPECT_TRUE(pages.pages()[0].drawing.words.contains(QStringLiteral("다 읽음"))) << "for a screen reader";
        dialog.reject();
    });
    EXPECT_TRUE(shown);

    // The host may close the window under the preview.
    EXPECT_TRUE(inDialog<print::PreviewWindow>("cmdPrint", [this](print::PreviewWindow &) { window_.reset(); }));
}

TEST_F(Window, SortsByAColumnKeepsWhatIsSelectedInSightAndTheTotalsBelow)
{
    window_ = std::make_unique<ReportWindow>(std::make_unique<SalesPeriodReport>(),
                                             samplerows::clinic(ado::Engine::SQLite).connection());
    window_->show();
    ASSERT_TRUE(readToItsEnd());
    auto *table = control<QTableView>("tblReport");
    const int net = 6;
    table->selectRow(table->model()->rowCount() - 1);
    const QString selected = table->currentIndex().siblingAtColumn(0).data().toString();
    for (const Qt::SortOrder order : {Qt::AscendingOrder, Qt::DescendingOrder}) {
        table->sortByColumn(net, order);
        const QModelIndexList rows = table->selectionModel()->selectedRows();
        ASSERT_EQ(rows.size(), 1);
        EXPECT_EQ(rows.constFirst().data().toString(), selected);
        EXPECT_EQ(table->currentIndex().row(), rows.constFirst().row());
        EXPECT_TRUE(
            table->viewport()->rect().contains(table->visualRect(table->currentIndex().siblingAtColumn(1)).center()));
    }
    qint64 before = std::numeric_limits<qint64>::max();
    qint64 sum = 0;
    for (int row = 0; row < table->model()->rowCount(); ++row) {
        const qint64 amount = table->model()->index(row, net).data().toString().remove(u',').toLongLong();
        EXPECT_LE(amount, before);
        before = amount;
        sum += amount;
    }
    EXPECT_EQ(control<QTableView>("tblTotals")->model()->index(0, net).data().toString().remove(u',').toLongLong(),
              sum);
}

TEST_F(Window, LooksForACustomerAndOpensTheOrdersBehindAFigure)
{
    window_ = std::make_unique<ReportWindow>(std::make_unique<SalesPeriodReport>(),
                                             samplerows::clinic(ado::Engine::SQLite).connection());
    window_->show();
    ASSERT_TRUE(readToItsEnd());
    auto *box = control<QLineEdit>("txtFindCustomer");
    EXPECT_FALSE(box->isVisible());
    control<QDateEdit>("dtpFirst")->setDate(samplerows::firstDay);
    control<QComboBox>("cboView")->setCurrentIndex(3);
    ASSERT_TRUE(waitFor([&] { return !window_->isReading() && box->isVisible() && rows() == 21; }));
    auto *table = control<QTableView>("tblReport");
    const auto cell = [&](int column) { return table->currentIndex().siblingAtColumn(column).data().toString(); };

    QTest::keyClicks(box, "0000"); // of many chart numbers
    const QString first = cell(0);
    QTest::keyClick(box, Qt::Key_F3);
    EXPECT_TRUE(cell(0).contains("0000") && cell(0) != first) << cell(0).toStdString();
    QTest::keyClick(box, Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(cell(0), first);
    QTest::keyClick(box, Qt::Key_F3, Qt::ShiftModifier); // round to the last of all
    EXPECT_EQ(rows(), 22);
    EXPECT_EQ(table->currentIndex().row(), 20);
    table->sortByColumn(7, Qt::AscendingOrder);
    const QString sorted = cell(0);
    const QString net = cell(7);
    window_->activateWindow();
    table->setFocus();
    ASSERT_TRUE(waitFor([&] { return table->hasFocus(); }));
    const bool opened =
        ::inDialog([&] { QTest::keyClick(table, Qt::Key_Return); },
                   [&](const DialogDriver &orders) {
                       ASSERT_TRUE(waitFor([&] { return orders.text("lblOrders").ends_with("건"); }));
                       auto *list = orders.find<QTableView>("tblReport");
                       EXPECT_EQ(list->model()->index(0, 1).data().toString(), sorted);
                       EXPECT_EQ(orders.find<QTableView>("tblTotals")->model()->index(0, 4).data(), net);
                       orders.key(Qt::Key_Escape);
                   });
    EXPECT_TRUE(opened);
    EXPECT_EQ(cell(0), sorted);
    QTest::keyClick(box, Qt::Key_Escape);
    EXPECT_EQ(rows(), 21);
}

TEST(Chart, TellsItsFiguresInWordsAndItsSeriesApartWithoutColour)
{
    const auto won = [](qint64 amount) { return runtime::Currency::fromWon(amount); };
    Chart plan;
    plan.title = QStringLiteral("수납");
    plan.categories = {QStringLiteral("11-24"), QStringLiteral("11-25")};
    for (std::size_t series = 0; series < controls::seriesCount; ++series)
        plan.series.push_back({QStringLiteral("방법 %1").arg(series), {won(25500), won(-500)}});
    SheetChart chart;
    chart.setPlan(plan);
    EXPECT_EQ(chart.accessibleDescription().section(u'\n', 0, 1).toStdString(),
              "수납\n방법 0: 11-24 25,500원, 11-25 -500원");
    const auto looks = [&chart] {
        std::set<int> hatchings;
        for (QAbstractSeries *series : chart.chart()->series()) {
            for (const QBarSet *set : static_cast<QAbstractBarSeries *>(series)->barSets())
                hatchings.insert(set->brush().style());
        }
        return hatchings;
    };
    EXPECT_EQ(looks().size(), controls::seriesCount);

    plan.categories.clear();
    for (Chart::Series &series : plan.series)
        series.values.clear();
    for (int day = 1; day <= 200; ++day) {
        plan.categories << QString::number(day);
        for (Chart::Series &series : plan.series)
            series.values.push_back(won(day));
    }
    chart.setPlan(plan);
    EXPECT_EQ(chart.accessibleDescription().section(u'\n', 1, 1).toStdString(),
              "방법 0: 합계 20,100원, 가장 큰 값 200 200원");
    std::set<std::pair<int, qreal>> dashes;
    for (QAbstractSeries *series : chart.chart()->series()) {
        const QPen pen = static_cast<QLineSeries *>(series)->pen();
        dashes.emplace(int(pen.style()), pen.widthF());
    }
    EXPECT_EQ(dashes.size(), controls::seriesCount);
}

#include "FrameTest.moc"
