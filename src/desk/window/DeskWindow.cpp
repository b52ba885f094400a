#include "desk/window/DeskWindow.h"

#include "desk/chain/ChainReport.h"
#include "desk/window/JournalWindow.h"
#include "desk/window/Look.h"
#include "desk/window/SettingsDialog.h"
#include "platform/ado/Foresight.h"
#include "platform/controls/DeskStyle.h"
#include "platform/controls/EventEdge.h"
#include "platform/controls/Modal.h"
#include "platform/controls/Named.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Format.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFrame>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScopeGuard>
#include <QVBoxLayout>

#include <algorithm>

namespace desk {

namespace {

using controls::named;

QLabel *label(const QString &text, double size, bool bold = false)
{
    auto *result = new QLabel(text);
    result->setTextFormat(Qt::PlainText);
    QFont font = result->font();
    font.setPointSizeF(font.pointSizeF() * size);
    font.setBold(bold);
    result->setFont(font);
    return result;
}

/// Leaves room between a cell's text and its edge.
class RoomyCells : public controls::DeskStyle
{
public:
    int pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const override
    {
        return metric == PM_FocusFrameHMargin ? 7 : DeskStyle::pixelMetric(metric, option, widget);
    }
};

const QString selectClinicName = QStringLiteral("SELECT tpsps_Value FROM tPSProperties WHERE tpsps_Key = '지점명'");

QString clinicName(ado::Connection &connection)
{
    QString name;
    runtime::Attempt attempt;
    attempt([&] {
        const ado::CellTable rows = connection.read(selectClinicName);
        if (rows.rowCount() > 0)
            name = rows.raw(0, 0).toString();
    });
    return name.isEmpty() ? QStringLiteral("한의원") : name;
}

QString describe(const Patient &patient)
{
    QStringList parts{QStringLiteral("챠트번호 ") + patient.chartNumber,
                      runtime::dateText(patient.birth)
                          + (patient.male ? QStringLiteral(" 남") : QStringLiteral(" 여"))};
    for (const QString &part : {patient.cell, patient.phone, patient.address}) {
        if (!part.isEmpty())
            parts << part;
    }
    return parts.join(QStringLiteral("   ·   "));
}

} // namespace

DeskWindow::Head DeskWindow::readHead(const ado::ConnectionPtr &connection)
{
    ado::Foresight next(connection);
    foreseeHead(next);
    Head head;
    head.clinicName = clinicName(*connection);
    head.seesClinics = chain::seesClinics(connection);
    return head;
}

void DeskWindow::foreseeHead(ado::Foresight &next)
{
    next.read(selectClinicName);
    chain::foreseeClinics(next);
}

DeskWindow::DeskWindow(const ado::ConnectionPtr &connection, Patients patients, QWidget *parent)
    : DeskWindow(parent)
{
    open(connection, readHead(connection), patients);
}

DeskWindow::DeskWindow(QWidget *parent)
    : QWidget(parent)
    , model_(new PatientModel(this))
    , clinicName_(label({}, 1.6, true))
    , search_(named(new controls::SearchBox, QStringLiteral("txtSearch")))
    , table_(named(new QTableView, QStringLiteral("tblPatients")))
    , count_(label({}, 1.0))
    , chosenName_(label({}, 1.25, true))
    , chosenDetail_(label({}, 1.0))
    , notice_(named(label({}, 1.0), QStringLiteral("lblNotice")))
    , sale_(named(new QPushButton(QStringLiteral("물품판매(F2)")), QStringLiteral("cmdSale")))
    , manage_(named(new QPushButton(QStringLiteral("물품관리(F3)")), QStringLiteral("cmdManage")))
    , journal_(named(new QPushButton(QStringLiteral("변경 이력(F9)")), QStringLiteral("cmdJournal")))
    , chain_(named(new QPushButton(QStringLiteral("체인 통계(F8)")), QStringLiteral("cmdChain")))
    , settings_(named(new GearButton, QStringLiteral("cmdSettings")))
{
    setObjectName(QStringLiteral("deskWindow"));
    makeTable();
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(18, 16, 18, 14);
    layout->setSpacing(12);
    layout->addWidget(makeHead());
    layout->addWidget(table_, 1);
    layout->addWidget(makeFoot());
    layout->addWidget(notice_);
    setNotice({});
    resizeWithinScreen(*this, {1200, 680});
    connectControls();
    search_->setFocus();
}

void DeskWindow::open(const ado::ConnectionPtr &connection, const Head &head, Patients patients)
{
    connection_ = connection;
    component_.emplace(connection);
    setWindowTitle(head.clinicName + QStringLiteral(" 접수 데스크"));
    clinicName_->setText(head.clinicName);
    chain_->setVisible(head.seesClinics);
    if (patients == Patients::AtOnce)
        return refresh();
    showReading();
    coming_.emplace(PatientFile::send(connection));
}

QWidget *DeskWindow::makeHead()
{
    auto *head = new QWidget;
    auto *row = new QHBoxLayout(head);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(10);
    row->addWidget(clinicName_);
    row->addStretch(1);
    row->addWidget(count_);
    row->addSpacing(14);
    auto *caption = label(QStringLiteral("환자 찾기(&F) :"), 1.0);
    caption->setBuddy(search_);
    row->addWidget(caption);
    search_->setPlaceholderText(QStringLiteral("이름, 초성, 챠트번호, 전화번호"));
    search_->setAccessibleName(QStringLiteral("환자 찾기"));
    search_->setClearButtonEnabled(true);
    search_->setMinimumWidth(320);
    search_->setMinimumHeight(34);
    search_->setTextMargins(6, 0, 6, 0);
    row->addWidget(search_);
    settings_->setFixedSize(34, 34);
    settings_->setToolTip(QStringLiteral("데스크 설정 (F10)"));
    settings_->setAccessibleName(QStringLiteral("데스크 설정"));
    row->addWidget(settings_);
    return head;
}

QWidget *DeskWindow::makeFoot()
{
    auto *foot = new QFrame;
    foot->setFrameShape(QFrame::StyledPanel);
    auto *row = new QHBoxLayout(foot);
    row->setContentsMargins(14, 10, 14, 10);
    row->setSpacing(10);
    auto *texts = new QVBoxLayout;
    texts->setSpacing(4);
    texts->addWidget(chosenName_);
    texts->addWidget(chosenDetail_);
    row->addLayout(texts, 1);
    for (QPushButton *button : {sale_, manage_, journal_, chain_}) {
        button->setMinimumSize(132, 44);
        button->setAutoDefault(false);
        row->addWidget(button);
    }
    QFont strong = sale_->font();
    strong.setBold(true);
    sale_->setFont(strong);
    chosenDetail_->setMinimumWidth(0);
    chosenDetail_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    return foot;
}

void DeskWindow::makeTable()
{
    auto *cells = new RoomyCells;
    cells->setParent(table_);
    table_->setStyle(cells);
    table_->setModel(model_);
    table_->setAccessibleName(QStringLiteral("환자 목록"));
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setSelectionMode(QAbstractItemView::SingleSelection);
    table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table_->setAlternatingRowColors(true);
    table_->setShowGrid(false);
    table_->setTabKeyNavigation(false);
    table_->setWordWrap(false);
    table_->verticalHeader()->hide();
    const int rowHeight = fontMetrics().height() + 12;
    table_->verticalHeader()->setDefaultSectionSize(rowHeight);
    table_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table_->horizontalHeader()->setHighlightSections(false);
    table_->horizontalHeader()->setDefaultAlignment(Qt::AlignCenter);
    table_->horizontalHeader()->setStretchLastSection(true);
    table_->horizontalHeader()->setMinimumHeight(rowHeight);
    const int widths[PatientModel::ColumnCount]{120, 100, 120, 64, 140, 150, 300};
    for (int column = 0; column < PatientModel::ColumnCount; ++column)
        table_->setColumnWidth(column, widths[column]);
}

void DeskWindow::connectControls()
{
    connect(search_, &controls::SearchBox::typed, this, [this](const QString &typed) {
        model_->setSearch(typed);
        table_->selectRow(0);
        showSelected();
    });
    connect(table_->selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this] { showSelected(); });
    controls::onEvent(table_, &QTableView::doubleClicked, this, [this](const QModelIndex &) { openSale(); });
    controls::onEvent(sale_, &QPushButton::clicked, this, [this](bool) { openSale(); });
    controls::onEvent(manage_, &QPushButton::clicked, this, [this](bool) { openManagement(); });
    controls::onEvent(journal_, &QPushButton::clicked, this, [this](bool) { openJournal(); });
    controls::onEvent(chain_, &QPushButton::clicked, this, [this](bool) { openChain(); });
    controls::onEvent(settings_, &QToolButton::clicked, this, [this](bool) { openSettings(); });
    search_->installEventFilter(this);
    table_->installEventFilter(this);
}

void DeskWindow::refresh()
{
    const std::optional<Patient> before = selected();
    const auto came = qScopeGuard([this] { coming_.reset(); });
    model_->setPatients(PatientFile(connection_));
    table_->selectRow(before ? std::max(model_->rowOf(before->key), 0) : 0);
    showSelected();
}

void DeskWindow::showReading()
{
    chosenName_->setText(QStringLiteral("환자 목록을 가져오고 있습니다."));
    sale_->setEnabled(false);
    manage_->setEnabled(false);
}

void DeskWindow::setNotice(const QString &notice)
{
    notice_->setText(notice);
    notice_->setVisible(!notice.isEmpty());
}

void DeskWindow::showSelected()
{
    const QLocale korean(QLocale::Korean, QLocale::SouthKorea);
    const QString all = korean.toString(model_->allPatients());
    const bool filtered = model_->rowCount() != model_->allPatients();
    count_->setText(filtered
                        ? QStringLiteral("찾은 환자 %1명 / 전체 %2명").arg(korean.toString(model_->rowCount()), all)
                        : QStringLiteral("%1명").arg(all));
    const std::optional<Patient> patient = selected();
    sale_->setEnabled(patient.has_value());
    manage_->setEnabled(patient.has_value());
    if (patient) {
        chosenName_->setText(patient->name + QStringLiteral(" 님"));
        chosenDetail_->setText(describe(*patient));
    } else {
        chosenName_->setText(model_->allPatients() == 0 ? QStringLiteral("등록된 환자가 없습니다")
                                                        : QStringLiteral("맞는 환자가 없습니다"));
        chosenDetail_->setText(QStringLiteral("환자를 등록한 뒤 F5를 누르십시오."));
    }
}

std::optional<Patient> DeskWindow::selected() const
{
    const QModelIndex current = table_->currentIndex();
    if (!current.isValid() || current.row() >= model_->rowCount())
        return std::nullopt;
    return model_->patient(current.row());
}

void DeskWindow::openSale()
{
    if (const std::optional<Patient> patient = selected())
        component_->showProductSale(*patient);
}

void DeskWindow::openManagement()
{
    if (const std::optional<Patient> patient = selected())
        component_->showProductSaleManage(*patient);
}

void DeskWindow::openJournal()
{
    auto journal = std::make_unique<JournalWindow>(connection_, selected());
    journal.release()->show(); // it goes when it is closed
}

void DeskWindow::openChain()
{
    QWidget *report = chain::openReport(connection_);
    resizeWithinScreen(*report, {1320, 760});
    report->show();
}

void DeskWindow::openSettings()
{
    const controls::Modal<SettingsDialog> settings(connection_, this);
    controls::runModal(settings.get());
}

void DeskWindow::keyPressEvent(QKeyEvent *event)
{
    if (event->isAutoRepeat())
        return QWidget::keyPressEvent(event);
    switch (event->key()) {
    case Qt::Key_F2:
        return sale_->click();
    case Qt::Key_F3:
        return manage_->click();
    case Qt::Key_F8:
        return chain_->isHidden() ? QWidget::keyPressEvent(event) : chain_->click();
    case Qt::Key_F9:
        return journal_->click();
    case Qt::Key_F10:
        return settings_->click();
    case Qt::Key_F5:
        return controls::runEvent([this] { refresh(); });
    case Qt::Key_Escape:
        search_->clear();
        return search_->setFocus();
    default:
        QWidget::keyPressEvent(event);
    }
}

bool DeskWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        if ((key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) && !key->isAutoRepeat()) {
            sale_->click();
            return true;
        }
        // The list is walked through without leaving the search.
        if (watched == search_ && (key->key() == Qt::Key_Down || key->key() == Qt::Key_Up)) {
            QApplication::sendEvent(table_, event);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void DeskWindow::closeEvent(QCloseEvent *event)
{
    // The sale window lives on this program's connection and saves its layout when it closes.
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (window != this && window->isVisible() && !window->close())
            return event->ignore();
    }
    QWidget::closeEvent(event);
}

} // namespace desk
