#include "platform/print/VSPrinter.h"

#include "platform/controls/EventEdge.h"
#include "platform/controls/Named.h"
#include "platform/print/Lengths.h"
#include "platform/print/PageCanvas.h"
#include "platform/print/Printers.h"

#include <QFileDialog>
#include <QHBoxLayout>
#include <QShortcut>
#include <QTimer>

#include <algorithm>

namespace print {

namespace {

struct CommandFace
{
    const char *name;
    const char16_t *caption;
    const char *keys; ///< separated by blanks
    bool gapAfter;
};

// In the order of the commands.
constexpr CommandFace faces[] = {
    {"cmdPrint", u"인쇄", "Ctrl+P", false},
    {"cmdSavePdf", u"PDF 저장", "Ctrl+S", true},
    {"cmdFirstPage", u"처음", "Ctrl+Home", false},
    {"cmdPreviousPage", u"이전", "PgUp", false},
    {"cmdNextPage", u"다음", "PgDown", false},
    {"cmdLastPage", u"끝", "Ctrl+End", true},
    {"cmdZoomOut", u"축소", "Ctrl+-", false},
    {"cmdZoomIn", u"확대", "Ctrl++ Ctrl+=", false},
    {"cmdFitWidth", u"폭 맞춤", "Ctrl+1", false},
    {"cmdFitPage", u"쪽 맞춤", "Ctrl+0", true},
    {"cmdClose", u"닫기", "", false},
};

constexpr double zoomStep = 1.25;
constexpr double leastZoom = 0.25;
constexpr double mostZoom = 4;

} // namespace

VSPrinter::VSPrinter(QWidget *parent)
    : QWidget(parent)
    , cboPrinter_(controls::named(new QComboBox(this), QStringLiteral("cboPrinter")))
    , lblPage_(controls::named(new QLabel(this), QStringLiteral("lblPage")))
    , lblZoom_(controls::named(new QLabel(this), QStringLiteral("lblZoom")))
    , lblDone_(controls::named(new QLabel(this), QStringLiteral("lblDone")))
    , scroll_(new QScrollArea(this))
    , canvas_(new PageCanvas)
{
    auto *bar = new QHBoxLayout;
    bar->setContentsMargins(8, 6, 8, 0);
    bar->setSpacing(4);
    makeButtons(bar);

    cboPrinter_->setAccessibleName(QStringLiteral("프린터"));
    cboPrinter_->setMinimumWidth(170);
    lblPage_->setMinimumWidth(64);
    lblPage_->setAlignment(Qt::AlignCenter);
    lblZoom_->setMinimumWidth(44);
    lblZoom_->setAlignment(Qt::AlignCenter);

    scroll_->setBackgroundRole(QPalette::Dark);
    scroll_->setAlignment(Qt::AlignCenter);
    scroll_->setWidget(canvas_);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(bar);
    layout->addWidget(scroll_, 1);
    setFocusProxy(scroll_);
    // Asking the printing system may take a while; the page stands first.
    QTimer::singleShot(0, this, [this] { fillPrinters(); });
}

void VSPrinter::makeButtons(QHBoxLayout *bar)
{
    for (int index = 0; index < CommandCount; ++index) {
        const CommandFace &face = faces[index];
        const auto command = Command(index);
        auto *button = controls::named(new QPushButton(QString::fromUtf16(face.caption), this), QString::fromLatin1(face.name));
        button->setAutoDefault(false);
        button->setAccessibleName(button->text());
        button->setToolTip(QString::fromLatin1(face.keys).section(QLatin1Char(' '), 0, 0));
        controls::onEvent(button, &QPushButton::clicked, this, [this, command](bool) { run(command); });
        const QStringList keys = QString::fromLatin1(face.keys).split(QLatin1Char(' '), Qt::SkipEmptyParts);
        for (const QString &key : keys)
            connect(new QShortcut(QKeySequence(key), this), &QShortcut::activated, button, &QPushButton::click);
        buttons_[index] = button;
        if (index == Close) {
            bar->addWidget(lblDone_, 1);
            bar->addWidget(button);
            break;
        }
        if (index == Print) {
            auto *caption = new QLabel(QStringLiteral("프린터(&R)"), this);
            caption->setBuddy(cboPrinter_);
            bar->addWidget(caption);
            bar->addWidget(cboPrinter_);
        }
        bar->addWidget(button);
        if (index == PreviousPage)
            bar->addWidget(lblPage_);
        if (index == ZoomOut)
            bar->addWidget(lblZoom_);
        if (face.gapAfter)
            bar->addSpacing(14);
    }
}

void VSPrinter::run(Command command)
{
    switch (command) {
    case Print: return printOut();
    case SavePdf: return savePdf();
    case FirstPage: return showPage(0);
    case PreviousPage: return showPage(page_ - 1);
    case NextPage: return showPage(page_ + 1);
    case LastPage: return showPage(document_.pageCount() - 1);
    case ZoomOut: return setZoom(zoom_ / zoomStep);
    case ZoomIn: return setZoom(zoom_ * zoomStep);
    case FitWidth: return fit(document_.paper().width(), 0);
    case FitPage: return fit(document_.paper().width(), document_.paper().height());
    case Close: emit closeAsked(); return;
    case CommandCount: break;
    }
}

void VSPrinter::setDocument(Document document, const QString &title)
{
    document_ = std::move(document);
    title_ = title;
    showPage(0);
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
    lblPage_->setText(QStringLiteral("%1 / %2쪽").arg(page_ + 1).arg(document_.pageCount()));
    lblZoom_->setText(QStringLiteral("%1%").arg(qRound(zoom_ * 100)));
    for (const Command command : {FirstPage, PreviousPage})
        buttons_[command]->setEnabled(page_ > 0);
    for (const Command command : {NextPage, LastPage})
        buttons_[command]->setEnabled(page_ + 1 < document_.pageCount());
}

void VSPrinter::fillPrinters()
{
    cboPrinter_->clear();
    cboPrinter_->addItems(printerNames());
    cboPrinter_->setCurrentText(device_.isEmpty() ? defaultPrinter() : device_);
    if (cboPrinter_->count() == 0)
        cboPrinter_->setPlaceholderText(QStringLiteral("등록된 프린터 없음"));
}

void VSPrinter::printOut()
{
    lblDone_->clear();
    const QString printer = cboPrinter_->count() > 0 ? cboPrinter_->currentText() : device_;
    send(document_, printer, title_);
    lblDone_->setText(QStringLiteral("인쇄를 보냈습니다."));
}

void VSPrinter::savePdf()
{
    lblDone_->clear();
    QString file = QFileDialog::getSaveFileName(this, QStringLiteral("PDF로 저장"), title_ + QStringLiteral(".pdf"),
                                                QStringLiteral("PDF (*.pdf)"));
    if (file.isEmpty())
        return;
    if (!file.endsWith(QLatin1String(".pdf"), Qt::CaseInsensitive))
        file += QLatin1String(".pdf");
    print::savePdf(document_, file, title_);
    lblDone_->setText(QStringLiteral("저장했습니다: %1").arg(file));
}

} // namespace print
