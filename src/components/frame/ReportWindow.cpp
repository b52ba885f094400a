#include "components/frame/ReportWindow.h"

#include "components/frame/CashCountBox.h"
#include "components/frame/CsvFile.h"
#include "components/frame/CustomerFind.h"
#include "components/frame/OrdersWindow.h"
#include "components/frame/PeriodBar.h"
#include "components/frame/SavedLine.h"
#include "components/frame/SheetChart.h"
#include "components/frame/SheetPrint.h"
#include "components/frame/SheetView.h"
#include "components/frame/Shop.h"
#include "components/frame/SummaryBox.h"
#include "platform/controls/EventEdge.h"
#include "platform/controls/FileDialog.h"
#include "platform/controls/MessageBox.h"
#include "platform/controls/Modal.h"
#include "platform/controls/Named.h"
#include "platform/controls/Spoken.h"
#include "platform/controls/Wheel.h"
#include "platform/print/PreviewWindow.h"
#include "platform/runtime/Log.h"
#include "platform/runtime/Operation.h"
#include "platform/runtime/RuntimeError.h"

#include <QHBoxLayout>
#include <QShortcut>
#include <QVBoxLayout>

namespace statistics {

namespace {

QPushButton *commandButton(const char *name, const QString &caption)
{
    auto *button = controls::named(new QPushButton(caption), QLatin1String(name));
    button->setAutoDefault(false);
    return button;
}

} // namespace

ReportWindow::ReportWindow(std::unique_ptr<Report> report, ado::ConnectionPtr connection, QWidget *parent)
    : QWidget(parent)
    , report_(std::move(report))
    , connection_(std::move(connection))
    , periodBar_(new PeriodBar(report_->asks()))
    , cboView_(controls::named(controls::withGuardedWheel(new QComboBox), QStringLiteral("cboView")))
    , cmdRead_(commandButton("cmdRead", QStringLiteral("새로고침")))
    , cmdCsv_(commandButton("cmdCsv", QStringLiteral("Excel용 저장")))
    , cmdPrint_(commandButton("cmdPrint", QStringLiteral("인쇄")))
    , lblState_(controls::named(new QLabel, QStringLiteral("lblState")))
    , saved_(new SavedLine)
    , prgReading_(controls::named(new QProgressBar, QStringLiteral("prgReading")))
    , cmdCancel_(commandButton("cmdCancel", QStringLiteral("중지")))
    , summary_(new SummaryBox)
    , cashCount_(new CashCountBox)
    , table_(new SheetView)
    , find_(new CustomerFind(table_))
    , chart_(new SheetChart)
    , parts_(new QSplitter(Qt::Vertical))
{
    controls::installSpokenControls();
    setWindowTitle(report_->title());
    parts_->setChildrenCollapsible(false);
    parts_->addWidget(table_);
    parts_->addWidget(chart_);
    table_->setMinimumHeight(90);
    chart_->setMinimumHeight(120);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 6, 8, 6);
    layout->addLayout(head());
    layout->addLayout(choices());
    layout->addLayout(state());
    layout->addWidget(saved_);
    layout->addWidget(summary_);
    layout->addWidget(cashCount_);
    layout->addWidget(parts_, 1);
    wire();
    QTimer::singleShot(0, this, &ReportWindow::open);
}

ReportWindow::~ReportWindow() = default;

QLayout *ReportWindow::head()
{
    auto *title = controls::named(new QLabel(report_->title()), QStringLiteral("lblTitle"));
    QFont large = title->font();
    large.setBold(true);
    large.setPointSizeF(large.pointSizeF() * 1.3);
    title->setFont(large);
    auto *row = new QHBoxLayout;
    row->addWidget(title);
    row->addStretch();
    row->addWidget(new QLabel(QStringLiteral("단위: 원")));
    return row;
}

QLayout *ReportWindow::choices()
{
    auto *row = new QHBoxLayout;
    row->addWidget(periodBar_);
    cboView_->addItems(report_->views());
    cboView_->setAccessibleName(QStringLiteral("보기"));
    auto *label = new QLabel(QStringLiteral("보기:"));
    label->setBuddy(cboView_);
    row->addSpacing(8);
    row->addWidget(label);
    row->addWidget(cboView_);
    label->setVisible(cboView_->count() > 0);
    cboView_->setVisible(cboView_->count() > 0);
    row->addStretch();
    for (QPushButton *button : {cmdRead_, cmdCsv_, cmdPrint_})
        row->addWidget(button);
    cmdCsv_->setToolTip(QStringLiteral("CSV 파일로 저장"));
    cmdRead_->setShortcut(Qt::Key_F5);
    cmdRead_->setToolTip(QStringLiteral("새로고침 (F5)"));
    return row;
}

QLayout *ReportWindow::state()
{
    prgReading_->setRange(0, 1000);
    prgReading_->setFormat(QStringLiteral("%p%"));
    prgReading_->setMaximumWidth(260);
    prgReading_->setAccessibleName(QStringLiteral("가져오는 중"));
    auto *row = new QHBoxLayout;
    row->addWidget(lblState_, 1);
    row->addWidget(find_);
    row->addWidget(prgReading_);
    row->addWidget(cmdCancel_);
    find_->hide();
    lblState_->setMinimumHeight(cmdCancel_->sizeHint().height()); // the table does not jump when the bar comes
    lblState_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    prgReading_->hide();
    cmdCancel_->hide();
    return row;
}

void ReportWindow::wire()
{
    using controls::onEvent;
    onEvent(periodBar_, &PeriodBar::chosen, this, [this] { read(); });
    onEvent(cmdRead_, &QPushButton::clicked, this, [this](bool) { read(); });
    onEvent(cmdCsv_, &QPushButton::clicked, this, [this](bool) { saveCsv(); });
    onEvent(cmdPrint_, &QPushButton::clicked, this, [this](bool) { print(); });
    onEvent(cmdCancel_, &QPushButton::clicked, this, [this](bool) {
        work_.cancel();
        stopped(QStringLiteral("중지했습니다. 다시 보려면 '새로고침'을 누르십시오."));
    });
    onEvent(cboView_, &QComboBox::currentIndexChanged, this, [this](int) {
        if (!read_.isValid())
            return;
        if (report_->readingOf(view()) == reading_)
            showSheet();
        else
            read();
    });
    onEvent(&work_, &ReadingWork::progressed, this, [this](double part) {
        prgReading_->setValue(int(part * 1000));
        prgReading_->show();
        cmdCancel_->show();
    });
    onEvent(&work_, &ReadingWork::finished, this, [this] { done(); });
    onEvent(&work_, &ReadingWork::failed, this, [this](const QString &description) {
        stopped(QStringLiteral("통계를 가져오지 못했습니다: ")
                + QString(description).replace(QLatin1Char('\n'), QLatin1Char(' ')));
    });
    wireTable();
}

void ReportWindow::wireTable()
{
    using controls::onEvent;
    onEvent(find_, &CustomerFind::found, this, [this](int customer) { showFound(customer); });
    if (report_->tellsOrders())
        table_->letOpen();
    onEvent(table_, &SheetView::opened, this, [this](int row, int column) { showBehind(row, column); });
    const std::pair<QKeySequence, void (*)(CustomerFind &)> keys[] = {
        {QKeySequence(QKeySequence::Find), [](CustomerFind &find) { find.takeFocus(); }},
        {QKeySequence(Qt::Key_F3), [](CustomerFind &find) { find.step(+1); }},
        {QKeySequence(Qt::SHIFT | Qt::Key_F3), [](CustomerFind &find) { find.step(-1); }}};
    for (const auto &[key, answer] : keys) {
        auto *shortcut = new QShortcut(key, this, nullptr, nullptr, Qt::WidgetWithChildrenShortcut);
        onEvent(shortcut, &QShortcut::activated, this, [this, answer = answer] {
            if (find_->isVisible())
                answer(*find_);
        });
    }
}

void ReportWindow::open()
{
    const runtime::Operation operation("open report");
    // A shop that is closed today begins with the days on which there was something to report.
    QDate last = QDate::currentDate();
    opened_ = true;
    try {
        Figure figure{report_->lastDayStatement()};
        figure.take = [&last](const Record &row) {
            if (const QDate day = row.date(0); day.isValid())
                last = day;
        };
        Reading(connection_, {figure}, dayOf(last)).readAll();
    } catch (const runtime::RuntimeError &error) {
        runtime::trapped();
        stopped(QStringLiteral("통계를 가져오지 못했습니다: ") + error.description());
        return;
    }
    periodBar_->choose(report_->asks() == Report::Asks::Period ? monthOf(last) : dayOf(last));
}

void ReportWindow::read()
{
    const Period period = periodBar_->period();
    work_.cancel();
    if (!period.isValid()) {
        stopped(QStringLiteral("시작일이 종료일보다 늦습니다."));
        return;
    }
    read_ = period;
    reading_ = report_->readingOf(view());
    setBusy(true);
    work_.start(Reading(connection_, report_->figuresOf(view(), period), period));
}

void ReportWindow::setBusy(bool busy)
{
    cmdCsv_->setEnabled(!busy && read_.isValid());
    cmdPrint_->setEnabled(!busy && read_.isValid());
    cboView_->setEnabled(!busy);
    find_->setVisible(!busy && read_.isValid() && report_->hasCustomers(view()));
    if (busy) {
        lblState_->setText(QStringLiteral("가져오는 중입니다: ") + periodText());
        return;
    }
    prgReading_->hide();
    prgReading_->reset();
    cmdCancel_->hide();
}

QString ReportWindow::periodText() const
{
    return report_->asks() == Report::Asks::LastDay ? QStringLiteral("출고 기간: ") + read_.text() : read_.text();
}

void ReportWindow::done()
{
    setBusy(false);
    showSheet();
}

void ReportWindow::showSheet()
{
    sheet_ = report_->sheet(view());
    saved_->hide();
    find_->setVisible(report_->hasCustomers(view()));
    find_->setTexts([this] { return report_->customers(); });
    const QString none = report_->asks() == Report::Asks::LastDay
                             ? QStringLiteral("해당하는 물품이 없습니다.")
                             : QStringLiteral("이 기간에는 내역이 없습니다. 기간을 바꾸십시오.");
    const QString count = shownText(runtime::Currency::fromWon(qint64(sheet_.rows.size())));
    const QString rows = sheet_.rows.empty() ? none : count + QStringLiteral("행");
    lblState_->setText(QStringList{periodText(), rows, sheet_.remark}.join(QStringLiteral("   ")).trimmed());
    lblState_->setToolTip(sheet_.remark);
    summary_->setLines(sheet_.summary);
    cashCount_->setDay(read_.last, sheet_.cashChange);
    table_->setSheet(sheet_);
    chart_->setPlan(sheet_.chart);
    if (partedFor_ != sheet_.chart.lying) {
        // Lying bars need a line each; afterwards the parts are as the user leaves them.
        parts_->setSizes(sheet_.chart.lying ? QList<int>{500, 500} : QList<int>{600, 400});
        partedFor_ = sheet_.chart.lying;
    }
}

/// The table alone changes, and only where the customer had no row: a column that the user sorted by stays otherwise.
void ReportWindow::showFound(int customer)
{
    const int row = report_->setOut(customer);
    Sheet sheet = report_->sheet(view());
    if (sheet.rows != sheet_.rows) {
        sheet_ = std::move(sheet);
        table_->setSheet(sheet_);
    }
    if (row >= 0)
        table_->choose(row);
}

void ReportWindow::showBehind(int row, int column)
{
    if (work_.isRunning() || !read_.isValid())
        return; // what stands there is of another period
    std::optional<Behind> behind = report_->behind(view(), row, column);
    if (!behind)
        return;
    const controls::Modal<OrdersWindow> window(this, std::move(*behind), connection_);
    controls::runModal(window.get());
}

void ReportWindow::stopped(const QString &why)
{
    // What stood there belongs to other days than those that are now asked for.
    read_ = {};
    sheet_ = {};
    summary_->setLines({});
    cashCount_->setDay({}, {});
    table_->setSheet(sheet_);
    chart_->setPlan(sheet_.chart);
    saved_->hide();
    setBusy(false);
    lblState_->setText(why);
    lblState_->setToolTip(why);
}

void ReportWindow::saveCsv()
{
    const QString title = QStringLiteral("%1 %2").arg(report_->title(), cboView_->currentText()).trimmed();
    const QByteArray content = csvOf(title, periodText(), sheet_, table_->rows());
    const QString path = controls::askSaveFile(this, QStringLiteral("Excel용 저장"),
                                               QStringLiteral("%1 %2.csv").arg(title, read_.text()),
                                               QStringLiteral("CSV 파일 (*.csv)"), QStringLiteral("csv"));
    if (path.isEmpty())
        return;
    saveFile(path, content);
    saved_->tell(path);
}

void ReportWindow::print()
{
    Sheet printed = sheet_;
    printed.rows = table_->rows();
    const controls::Modal<print::PreviewWindow> window(
        this, report_->title() + QStringLiteral(" 인쇄"),
        print::PrinterMemory{QStringLiteral("Zelvo Desk"), QStringLiteral("물품판매관리")});
    const PrintedReport report{report_->title(),        periodText(),          std::move(printed),
                               cboView_->currentText(), shopName(connection_), cashCount_->count()};
    window->vsPrint()->setDocument(sheetOnPaper(report), report_->title(), report_->title() + u' ' + read_.text());
    controls::runModal(window.get());
}

} // namespace statistics
