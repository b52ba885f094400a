#include "desk/window/JournalWindow.h"

#include "desk/schema/Schema.h"
#include "desk/schema/Statements.h"
#include "desk/window/Look.h"
#include "platform/controls/Appearance.h"
#include "platform/controls/EventEdge.h"
#include "platform/controls/FileDialog.h"
#include "platform/controls/Modal.h"
#include "platform/controls/Named.h"
#include "platform/print/Lengths.h"
#include "platform/print/PreviewWindow.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/RuntimeError.h"

#include <QAbstractTextDocumentLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QSaveFile>
#include <QTextDocument>
#include <QVBoxLayout>

namespace desk {

using controls::named;

namespace {

/// A text on pages that lie.
print::Document onPaper(const QString &html)
{
    constexpr double margin = 12;
    constexpr double dotsPerInch = 96; // in which the text is laid out
    constexpr double dotsPerMm = dotsPerInch / print::mmPerInch;
    print::Document pages(print::A4.transposed());
    QFont letters = controls::deskFont();
    letters.setPixelSize(qRound(letters.pointSizeF() / 72 * dotsPerInch));
    QTextDocument text;
    text.setDefaultFont(letters);
    text.setDocumentMargin(0);
    text.setHtml(html);
    const QSizeF room = (pages.paper() - QSizeF(2 * margin, 2 * margin)) * dotsPerMm;
    text.setPageSize(room);
    for (int page = 0; page < text.pageCount(); ++page) {
        print::Drawing drawing;
        if (page == 0)
            drawing.words = text.toPlainText().split(u'\n');
        QPainter painter(&drawing.strokes);
        painter.setPen(controls::colors(controls::Ground::Paper).text);
        painter.translate(margin * print::gridPerMm, margin * print::gridPerMm);
        painter.scale(print::gridPerInch / dotsPerInch, print::gridPerInch / dotsPerInch);
        painter.translate(0, -page * room.height());
        QAbstractTextDocumentLayout::PaintContext context;
        context.palette = controls::deskPalette(controls::Scheme::Light); // as on paper, whatever the desktop
        context.clip = QRectF(QPointF(0, page * room.height()), room);
        painter.setClipRect(context.clip);
        text.documentLayout()->draw(&painter, context);
        painter.end();
        pages.addDrawing(drawing);
    }
    return pages;
}

} // namespace

JournalWindow::JournalWindow(const ado::ConnectionPtr &connection, const std::optional<Patient> &patient,
                             QWidget *parent)
    : QWidget(parent)
    , connection_(connection)
    , patient_(patient)
    , model_(new JournalModel(this))
    , ofPatient_(
          named(new QRadioButton(patient ? patient->name + QStringLiteral(" 님의 거래") : QStringLiteral("환자")),
                QStringLiteral("optPatient")))
    , ofDay_(named(new QRadioButton(QStringLiteral("하루의 수정·삭제")), QStringLiteral("optDay")))
    , day_(named(new controls::DateEdit, QStringLiteral("dtpDay")))
    , read_(named(new QPushButton(QStringLiteral("새로고침")), QStringLiteral("cmdRead")))
    , csv_(named(new QPushButton(QStringLiteral("Excel용 저장")), QStringLiteral("cmdCsv")))
    , print_(named(new QPushButton(QStringLiteral("인쇄")), QStringLiteral("cmdPrint")))
    , table_(named(new QTableView, QStringLiteral("tblJournal")))
    , state_(named(new QLabel, QStringLiteral("lblState")))
{
    if (!schema::hasJournal(*connection_))
        schema::refuse(QStringLiteral("변경 이력이 없는 데이터베이스입니다. 데스크를 모두 닫고 desk --upgrade를 "
                                      "실행하십시오."));
    setObjectName(QStringLiteral("journalWindow"));
    setWindowTitle(QStringLiteral("변경 이력"));
    setAttribute(Qt::WA_DeleteOnClose);
    makeTable();
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(14, 12, 14, 12);
    layout->setSpacing(10);
    layout->addLayout(makeHead());
    layout->addWidget(table_, 1);
    layout->addWidget(state_);
    resizeWithinScreen(*this, {1180, 620});
    ofPatient_->setEnabled(patient_.has_value());
    (patient_ ? ofPatient_ : ofDay_)->setChecked(true);
    day_->setDate(QDate::currentDate());
    refresh();
    connectControls();
}

QLayout *JournalWindow::makeHead()
{
    auto *row = new QHBoxLayout;
    row->setSpacing(10);
    row->addWidget(ofPatient_);
    row->addSpacing(12);
    row->addWidget(ofDay_);
    day_->setAccessibleName(QStringLiteral("변경 이력 날짜"));
    day_->setMinimumWidth(130);
    row->addWidget(day_);
    row->addStretch(1);
    for (QPushButton *button : {read_, csv_, print_}) {
        button->setAutoDefault(false);
        button->setMinimumHeight(32);
        row->addWidget(button);
    }
    read_->setToolTip(QStringLiteral("새로고침 (F5)"));
    csv_->setToolTip(QStringLiteral("CSV 파일로 저장"));
    return row;
}

void JournalWindow::makeTable()
{
    table_->setModel(model_);
    table_->setAccessibleName(QStringLiteral("변경 이력 목록"));
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table_->setAlternatingRowColors(true);
    table_->setShowGrid(false);
    table_->setTabKeyNavigation(false);
    table_->verticalHeader()->hide();
    table_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 12);
    table_->setWordWrap(false);
    table_->horizontalHeader()->setHighlightSections(false);
    table_->horizontalHeader()->setStretchLastSection(true);
    table_->horizontalHeader()->setMinimumHeight(fontMetrics().height() + 12);
    const int widths[JournalModel::ColumnCount]{170, 150, 60, 60, 90, 90, 300};
    for (int column = 0; column < JournalModel::ColumnCount; ++column)
        table_->setColumnWidth(column, widths[column]);
}

void JournalWindow::connectControls()
{
    controls::onEvent(ofPatient_, &QRadioButton::toggled, this, [this](bool) { refresh(); });
    controls::onEvent(day_, &QDateEdit::dateChanged, this, [this](const QDate &) {
        if (ofDay_->isChecked())
            refresh();
        else
            ofDay_->setChecked(true); // which reads
    });
    controls::onEvent(read_, &QPushButton::clicked, this, [this](bool) { refresh(); });
    controls::onEvent(csv_, &QPushButton::clicked, this, [this](bool) { saveCsv(); });
    controls::onEvent(print_, &QPushButton::clicked, this, [this](bool) { print(); });
}

void JournalWindow::refresh()
{
    model_->setEntries(ofPatient_->isChecked() ? journal::entriesOfCustomer(*connection_, patient_->key)
                                               : journal::changesOfDay(*connection_, day_->date()));
    const int rows = model_->rowCount();
    const QString count = QLocale(QLocale::Korean, QLocale::SouthKorea).toString(rows);
    state_->setText(rows == 0                      ? QStringLiteral("변경 이력이 없습니다.")
                    : rows == journal::MostEntries ? QStringLiteral("최근 %1건까지만 표시합니다.").arg(count)
                                                   : QStringLiteral("%1건").arg(count));
    csv_->setEnabled(rows > 0);
    print_->setEnabled(rows > 0);
}

QString JournalWindow::title() const
{
    return QStringLiteral("변경 이력: ")
           + (ofPatient_->isChecked() ? ofPatient_->text() : ofDay_->text() + u' ' + runtime::dateText(day_->date()));
}

QString JournalWindow::fileName() const
{
    return title().replace(QStringLiteral(": "), QStringLiteral(" "));
}

void JournalWindow::saveCsv()
{
    const QByteArray content = model_->csv();
    const QString path =
        controls::askSaveFile(this, QStringLiteral("Excel용 저장"), fileName() + QStringLiteral(".csv"),
                              QStringLiteral("CSV 파일 (*.csv)"), QStringLiteral("csv"));
    if (path.isEmpty())
        return;
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.commit())
        schema::refuse(QStringLiteral("파일을 저장하지 못했습니다: %1\n%2").arg(path, file.errorString()));
}

void JournalWindow::print()
{
    const controls::Modal<print::PreviewWindow> preview(
        this, QStringLiteral("변경 이력 인쇄"),
        print::PrinterMemory{QStringLiteral("Zelvo Desk"), QStringLiteral("물품판매관리")});
    preview->vsPrint()->setDocument(onPaper(model_->html(title())), QStringLiteral("변경 이력"), fileName());
    controls::runModal(preview.get());
}

void JournalWindow::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_F5 && !event->isAutoRepeat())
        return controls::runEvent([this] { refresh(); }, this);
    if (event->key() == Qt::Key_Escape) {
        close();
        return;
    }
    QWidget::keyPressEvent(event);
}

} // namespace desk
