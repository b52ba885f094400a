#include "platform/print/VSPrinter.h"

#include "platform/controls/EventEdge.h"
#include "platform/controls/FileDialog.h"
#include "platform/controls/Named.h"
#include "platform/controls/Wheel.h"
#include "platform/print/Lengths.h"
#include "platform/print/PageCanvas.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QPageSize>
#include <QPointer>
#include <QShortcut>
#include <QTimer>
#include <QWheelEvent>

#include <QScopeGuard>

#include <algorithm>
#include <utility>

namespace print {

namespace {

struct CommandFace
{
    const char *name;
    const char16_t *caption;
    const char *keys; ///< separated by blanks
};

// In the order of the commands.
constexpr CommandFace faces[] = {
    {"cmdPrint", u"인쇄", "Ctrl+P"},
    {"cmdSavePdf", u"PDF 저장", "Ctrl+S"},
    {"cmdFirstPage", u"처음", "Ctrl+Home Home"},
    {"cmdPreviousPage", u"이전", "PgUp"},
    {"cmdNextPage", u"다음", "PgDown"},
    {"cmdLastPage", u"끝", "Ctrl+End End"},
    {"cmdZoomOut", u"축소", "Ctrl+-"},
    {"cmdZoomIn", u"확대", "Ctrl++ Ctrl+="},
    {"cmdFitWidth", u"폭 맞춤", "Ctrl+1"},
    {"cmdFitPage", u"쪽 맞춤", "Ctrl+0"},
    {"cmdClose", u"닫기", ""},
};

constexpr double zoomStep = 1.25;
constexpr double leastZoom = 0.25;
constexpr double mostZoom = 4;
/// More pages than these are worth telling how far they are.
constexpr int quickPages = 20;

/// Letters below this are hard to read; no smaller paper makes them so.
constexpr double leastReadablePoints = 6;

/// "A4"; empty for a size without a name.
QString paperName(const QSizeF &paper)
{
    const QPageSize known(paper, QPageSize::Millimeter, QString(), QPageSize::FuzzyOrientationMatch);
    return known.id() == QPageSize::Custom ? QString() : known.name();
}

/// "A4 210 × 297 mm".
QString paperText(const QSizeF &paper)
{
    return QStringLiteral("%1 %2 × %3 mm")
        .arg(paperName(paper))
        .arg(qRound(paper.width()))
        .arg(qRound(paper.height()))
        .trimmed();
}

/// What the pages can be read on: their own paper first. A long document keeps that, for each letter would have to be measured.
std::vector<QSizeF> papersFor(const Document &document)
{
    std::vector<QSizeF> papers{document.paper()};
    const double smaller = document.onPaper(A5).scale();
    if (document.paper() == A4 && document.pageCount() <= quickPages
        && std::ranges::all_of(document.pages(),
                               [&](const Page &page) { return leastPoints(page) * smaller >= leastReadablePoints; }))
        papers.push_back(A5);
    return papers;
}

} // namespace

VSPrinter::VSPrinter(QWidget *parent)
    : QWidget(parent)
    , cboPrinter_(controls::named(controls::withGuardedWheel(new QComboBox(this)), QStringLiteral("cboPrinter")))
    , cboPaper_(controls::named(controls::withGuardedWheel(new QComboBox(this)), QStringLiteral("cboPaper")))
    , lblPage_(controls::named(new QLabel(this), QStringLiteral("lblPage")))
    , lblZoom_(controls::named(new QLabel(this), QStringLiteral("lblZoom")))
    , lblDone_(controls::named(new QLabel(this), QStringLiteral("lblDone")))
    , scroll_(new QScrollArea(this))
    , canvas_(new PageCanvas)
    , progress_(controls::named(new QProgressBar(this), QStringLiteral("progress")))
    , cmdCancel_(controls::named(new QPushButton(QStringLiteral("취소"), this), QStringLiteral("cmdCancel")))
{
    for (int command = 0; command < CommandCount; ++command)
        buttons_[command] = makeButton(Command(command));
    scroll_->setBackgroundRole(QPalette::Dark);
    scroll_->setAlignment(Qt::AlignCenter);
    scroll_->setWidget(canvas_);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    for (QHBoxLayout *bar : {makeOutputBar(), makeViewBar(), makeProgressBar()}) {
        bar->setContentsMargins(8, 2, 8, 2);
        layout->addLayout(bar);
    }
    layout->addWidget(scroll_, 1);
    setTabOrder(cboPrinter_, cboPaper_);
    QWidget *before = cboPaper_;
    for (QPushButton *button : buttons_)
        setTabOrder(std::exchange(before, button), button);
    setTabOrder(before, scroll_);
    setFocusProxy(scroll_);
    scroll_->viewport()->installEventFilter(this);
    controls::onEvent(cboPrinter_, &QComboBox::activated, this, [this](int) {
        takePaperOfPrinter();
        emit printerChosen(cboPrinter_->currentText());
    });
    controls::onEvent(cboPaper_, &QComboBox::activated, this, [this](int index) {
        usePaper(index);
        emit paperChosen(printer(), paperName(document_.paper()));
    });
    // Asking the printing system may take a while; the page stands first.
    QTimer::singleShot(0, this, [this] { fillPrinters(); });
}

QPushButton *VSPrinter::makeButton(Command command)
{
    const CommandFace &face = faces[command];
    auto *button =
        controls::named(new QPushButton(QString::fromUtf16(face.caption), this), QString::fromLatin1(face.name));
    button->setAutoDefault(false);
    button->setAccessibleName(button->text());
    const QStringList keys = QString::fromLatin1(face.keys).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    button->setToolTip(keys.value(0));
    for (const QString &key : keys)
        connect(new QShortcut(QKeySequence(key), this), &QShortcut::activated, button, &QPushButton::click);
    controls::onEvent(button, &QPushButton::clicked, this, [this, command](bool) { run(command); });
    return button;
}

QHBoxLayout *VSPrinter::makeOutputBar()
{
    auto *caption = new QLabel(QStringLiteral("프린터(&R)"), this);
    caption->setBuddy(cboPrinter_);
    cboPrinter_->setAccessibleName(QStringLiteral("프린터"));
    cboPrinter_->setMinimumWidth(200);
    auto *paper = new QLabel(QStringLiteral("용지(&Z)"), this);
    paper->setBuddy(cboPaper_);
    cboPaper_->setAccessibleName(QStringLiteral("용지"));
    cboPaper_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    // A long file name must not widen the window.
    lblDone_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto *bar = new QHBoxLayout;
    bar->addWidget(caption);
    bar->addWidget(cboPrinter_);
    bar->addWidget(paper);
    bar->addWidget(cboPaper_);
    bar->addWidget(buttons_[Print]);
    bar->addSpacing(14);
    bar->addWidget(buttons_[SavePdf]);
    bar->addWidget(lblDone_, 1);
    bar->addWidget(buttons_[Close]);
    return bar;
}

QHBoxLayout *VSPrinter::makeViewBar()
{
    for (QLabel *label : {lblPage_, lblZoom_}) {
        label->setMinimumWidth(64);
        label->setAlignment(Qt::AlignCenter);
    }
    auto *bar = new QHBoxLayout;
    bar->addStretch();
    for (QWidget *widget :
         QWidgetList{buttons_[FirstPage], buttons_[PreviousPage], lblPage_, buttons_[NextPage], buttons_[LastPage]})
        bar->addWidget(widget);
    bar->addSpacing(24);
    for (QWidget *widget :
         QWidgetList{buttons_[ZoomOut], lblZoom_, buttons_[ZoomIn], buttons_[FitWidth], buttons_[FitPage]})
        bar->addWidget(widget);
    bar->addStretch();
    return bar;
}

QHBoxLayout *VSPrinter::makeProgressBar()
{
    progress_->setFormat(QStringLiteral("%v / %m쪽"));
    progress_->setAccessibleName(QStringLiteral("출력 진행"));
    cmdCancel_->setAccessibleName(QStringLiteral("출력 취소"));
    cmdCancel_->setAutoDefault(false);
    connect(cmdCancel_, &QPushButton::clicked, this, [this] { stopped_ = true; });
    auto *bar = new QHBoxLayout;
    bar->addWidget(progress_, 1);
    bar->addWidget(cmdCancel_);
    progress_->hide();
    cmdCancel_->hide();
    return bar;
}

void VSPrinter::run(Command command)
{
    switch (command) {
    case Print:
        return printOut();
    case SavePdf:
        return savePdf();
    case FirstPage:
        return showPage(0);
    case PreviousPage:
        return showPage(page_ - 1);
    case NextPage:
        return showPage(page_ + 1);
    case LastPage:
        return showPage(document_.pageCount() - 1);
    case ZoomOut:
        return setZoom(zoom_ / zoomStep);
    case ZoomIn:
        return setZoom(zoom_ * zoomStep);
    case FitWidth:
        return fit(document_.paper().width(), 0);
    case FitPage:
        return fit(document_.paper().width(), document_.paper().height());
    case Close:
        emit closeAsked();
        return;
    case CommandCount:
        break;
    }
}

void VSPrinter::setDocument(Document document, const QString &title, const QString &fileName)
{
    composed_ = std::move(document);
    document_ = composed_;
    title_ = title;
    fileName_ = fileName.isEmpty() ? title : fileName;
    fillPapers();
    showPage(0);
}

void VSPrinter::fillPapers()
{
    cboPaper_->clear();
    for (const QSizeF &paper : papersFor(composed_))
        cboPaper_->addItem(paperText(paper), paper);
    takePaperOfPrinter();
}

QString VSPrinter::printer() const
{
    return cboPrinter_->count() > 0 ? cboPrinter_->currentText() : device_;
}

/// One that these pages cannot be read on is passed over.
void VSPrinter::takePaperOfPrinter()
{
    const QString remembered = paperOf_ ? paperOf_(printer()) : QString();
    int chosen = 0;
    for (int index = 0; index < cboPaper_->count(); ++index) {
        if (paperName(cboPaper_->itemData(index).toSizeF()) == remembered)
            chosen = index;
    }
    cboPaper_->setCurrentIndex(chosen);
    if (cboPaper_->count() > 0)
        usePaper(chosen);
}

void VSPrinter::usePaper(int index)
{
    document_ = composed_.onPaper(cboPaper_->itemData(index).toSizeF());
    showState();
}

void VSPrinter::showPage(int page)
{
    const int shown = std::clamp(page, 0, document_.pageCount() - 1);
    if (shown != page_)
        scroll_->ensureVisible(0, 0);
    page_ = shown;
    showState();
}

void VSPrinter::setZoom(double zoom)
{
    zoom_ = std::clamp(zoom, leastZoom, mostZoom);
    showState();
}

void VSPrinter::fit(double widthMm, double heightMm)
{
    const double dotsPerMm = canvas_->dotsPerInch() / mmPerInch;
    const QSize room = scroll_->maximumViewportSize();
    double zoom = room.width() / (widthMm * dotsPerMm);
    if (heightMm > 0)
        zoom = std::min(zoom, room.height() / (heightMm * dotsPerMm));
    setZoom(zoom);
}

void VSPrinter::showState()
{
    canvas_->setPage(document_, page_, zoom_);
    canvas_->setAccessibleName(QStringLiteral("%1 %2쪽").arg(title_).arg(page_ + 1));
    lblPage_->setText(QStringLiteral("%1 / %2쪽").arg(page_ + 1).arg(document_.pageCount()));
    lblZoom_->setText(QStringLiteral("%1%").arg(qRound(zoom_ * 100)));
    for (const Command command : {FirstPage, PreviousPage})
        buttons_[command]->setEnabled(page_ > 0);
    for (const Command command : {NextPage, LastPage})
        buttons_[command]->setEnabled(page_ + 1 < document_.pageCount());
    emit pageShown(page_ + 1, document_.pageCount());
}

bool VSPrinter::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() != QEvent::Wheel)
        return QWidget::eventFilter(object, event);
    const auto &wheel = *static_cast<QWheelEvent *>(event);
    if (!wheel.modifiers().testFlag(Qt::ControlModifier))
        return QWidget::eventFilter(object, event);
    if (wheel.angleDelta().y() != 0)
        setZoom(wheel.angleDelta().y() > 0 ? zoom_ * zoomStep : zoom_ / zoomStep);
    return true;
}

void VSPrinter::hideEvent(QHideEvent *event)
{
    stopped_ = true; // nobody is there to wait for the rest
    QWidget::hideEvent(event);
}

bool VSPrinter::watched(const std::function<bool(const Progress &)> &work)
{
    if (document_.pageCount() <= quickPages)
        return work({});
    const QPointer<VSPrinter> alive(this);
    const auto show = [this](bool working) {
        for (QWidget *widget : QWidgetList{progress_, cmdCancel_})
            widget->setVisible(working);
        for (QPushButton *button : buttons_)
            button->setEnabled(!working);
        cboPrinter_->setEnabled(!working);
        cboPaper_->setEnabled(!working);
    };
    stopped_ = false;
    progress_->setRange(0, document_.pageCount());
    show(true);
    const auto end = qScopeGuard([&] {
        if (!alive)
            return;
        show(false);
        showState();
    });
    return work([&](int page) {
        progress_->setValue(page);
        QCoreApplication::processEvents();
        return alive && !stopped_;
    });
}

void VSPrinter::fillPrinters()
{
    cboPrinter_->clear();
    cboPrinter_->addItems(printerNames());
    cboPrinter_->setCurrentText(cboPrinter_->findText(device_) >= 0 ? device_ : defaultPrinter());
    if (cboPrinter_->count() == 0)
        cboPrinter_->setPlaceholderText(QStringLiteral("등록된 프린터 없음"));
    takePaperOfPrinter();
}

void VSPrinter::printOut()
{
    lblDone_->clear();
    const QString printer = this->printer();
    const QPointer<VSPrinter> self(this);
    const bool sent = watched([&, pages = document_, title = title_](const Progress &progress) {
        return send(pages, printer, title, progress);
    });
    if (!self)
        return;
    lblDone_->setText(sent ? QStringLiteral("프린터로 보냈습니다.") : QStringLiteral("출력을 취소했습니다."));
    if (sent)
        emit printed(printer);
}

void VSPrinter::savePdf()
{
    lblDone_->clear();
    const QPointer<VSPrinter> self(this);
    const QString file = controls::askSaveFile(this, QStringLiteral("PDF로 저장"), fileName_ + QStringLiteral(".pdf"),
                                               QStringLiteral("PDF (*.pdf)"), QStringLiteral("pdf"));
    if (!self || file.isEmpty())
        return;
    const bool saved = watched([&, pages = document_, title = title_](const Progress &progress) {
        return print::savePdf(pages, file, title, progress);
    });
    if (self)
        lblDone_->setText(saved ? QStringLiteral("저장했습니다: %1").arg(file)
                                : QStringLiteral("저장을 취소했습니다."));
}

} // namespace print
