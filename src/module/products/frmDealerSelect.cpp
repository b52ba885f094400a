#include "products/frmDealerSelect.h"

#include "data/clsSQL.h"
#include "forms/FormRow.h"
#include "forms/MoneyBox.h"
#include "forms/modKeyBoard.h"
#include "platform/controls/EventEdge.h"
#include "platform/controls/MessageBox.h"
#include "platform/controls/Modal.h"
#include "platform/controls/Named.h"
#include "platform/controls/ShowText.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Conversions.h"
#include "settings/clsWindowPostion.h"
#include "settings/modFormLocate.h"

#include <QKeyEvent>
#include <QVBoxLayout>

#include <utility>

using controls::named;

namespace {

std::vector<controls::GridColumn> dealerSelectColumns()
{
    using Kind = controls::GridColumn::Kind;
    return {
        {QStringLiteral("CM_IsValid"), QStringLiteral("거래업체"), Kind::Check},
        {QStringLiteral("CM_Name"), QStringLiteral("회사이름"), Kind::Text, 130},
        {.field = QStringLiteral("CM_Address"), .caption = QStringLiteral("주소"), .width = 160, .fills = true},
        {QStringLiteral("CM_Tel"), QStringLiteral("전화번호"), Kind::Text, 100},
        {QStringLiteral("CM_RegNum"), QStringLiteral("사업자번호"), Kind::Text, 100},
        {QStringLiteral("CM_EtcMemo"), QStringLiteral("메모"), Kind::Text, 120},
    };
}

// Distance of the dialog from the calling control, in twips.
constexpr int rightOfControl = 255;
constexpr int belowControl = 1395;

bool isEnterKey(const QKeyEvent &event)
{
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

} // namespace

frmDealerSelect::frmDealerSelect(QWidget *owner)
    : QDialog(owner)
{
    createControls();
    layOutControls();
    connectControls();
}

frmDealerSelect::~frmDealerSelect()
{
    tdbDealerSelect_->setDataSource(nullptr); // the rows go before the grid does
}

void frmDealerSelect::createControls()
{
    setObjectName(QStringLiteral("frmDealerSelect"));
    setWindowTitle(QStringLiteral("거래처 선택"));
    txtDealerName_ = named(new MoneyBox({.onFocus = OnFocus::SelectAll}, this), QStringLiteral("txtDealerName"));
    chkcmdFindDealer_ =
        named(new controls::PushCheck(QStringLiteral("찾기"), this), QStringLiteral("chkcmdFindDealer"));
    tdbDealerSelect_ = named(new controls::RecordsetGrid(this), QStringLiteral("tdbDealerSelect"));
    tdbDealerSelect_->setAccessibleName(QStringLiteral("거래처"));
    tdbDealerSelect_->setColumns(dealerSelectColumns());
    tdbDealerSelect_->setEmptyText(QStringLiteral("찾은 거래처가 없습니다. 다른 이름으로 검색하십시오."));
    cmdOk_ = named(new QPushButton(QStringLiteral("선택(F12)"), this), QStringLiteral("cmdOk"));
    cmdCancel_ = named(new QPushButton(QStringLiteral("취소(F9)"), this), QStringLiteral("cmdCancel"));
    QFont strong = cmdOk_->font();
    strong.setBold(true);
    cmdOk_->setFont(strong);
    for (QPushButton *button : {cmdOk_, cmdCancel_}) {
        button->setAutoDefault(false); // Enter belongs to the box and the grid
        button->setMinimumSize(110, 32);
    }
}

void frmDealerSelect::layOutControls()
{
    auto *search = new QGridLayout;
    addFormRow(search, 0, 0, QStringLiteral("거래처: "), txtDealerName_);
    search->addWidget(chkcmdFindDealer_, 0, 2);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOk_);
    buttons->addWidget(cmdCancel_);
    auto *form = new QVBoxLayout(this);
    form->addLayout(search);
    form->addWidget(tdbDealerSelect_, 1);
    form->addLayout(buttons);
    setTabChain({txtDealerName_, chkcmdFindDealer_, tdbDealerSelect_, cmdOk_, cmdCancel_});
    resize(760, 320);
}

void frmDealerSelect::connectControls()
{
    using controls::onEvent;
    chkcmdFindDealer_->onPush(this, [this] { findDealer(); });
    onEvent(tdbDealerSelect_, &controls::RecordsetGrid::rowDoubleClicked, this, [this] { choose(); });
    onEvent(cmdOk_, &QPushButton::clicked, this, [this](bool) { choose(); });
    connect(cmdCancel_, &QPushButton::clicked, this, &QDialog::reject);
    installEventFilter(this);
    for (auto *control : findChildren<QWidget *>())
        control->installEventFilter(this);
}

qint16 frmDealerSelect::SelectDealer(const ado::ConnectionPtr &connection, qint16 intShowMode, const QString &strStart,
                                     QWidget *frmOwner, const QWidget &hWnd)
{
    connection_ = connection;
    rsDealer_ = std::make_unique<ado::Recordset>();
    tdbDealerSelect_->setDataSource(rsDealer_.get());
    controls::showText(txtDealerName_, runtime::Trim(strStart));
    if (!refreshDealerGrid(txtDealerName_->text())) {
        tdbDealerSelect_->setDataSource(nullptr);
        rsDealer_.reset();
        return -1;
    }
    if (frmOwner && frmOwner != parentWidget())
        setParent(frmOwner, windowFlags());
    placeBeside(hWnd);
    setWindowModality(intShowMode == Modal ? Qt::ApplicationModal : Qt::NonModal);
    if (intShowMode == Modal)
        controls::runModal(this);
    else
        show();
    return 1;
}

/// From the lower left of the calling control to the right and upwards, but never over the edge of the screen.
void frmDealerSelect::placeBeside(const QWidget &hWnd)
{
    const clsWindowPostion position;
    qint32 x = 0;
    qint32 y = 0;
    position.GetScreenPosition(hWnd, x, y);
    const QPoint place = position.pixelsFromTwips(*this, x + rightOfControl, y + belowControl);
    const QWidget *owner = hWnd.window();
    const int caption = owner->frameSize().height() - owner->height(); // the dialog's own comes with its showing
    move(place.x(), place.y() - height() - caption);
    keepOnScreen(*this);
}

bool frmDealerSelect::refreshDealerGrid(const QString &text, bool rebind)
{
    runtime::Attempt attempt;
    attempt([&] {
        if (rsDealer_->isOpen())
            rsDealer_->Close();
        rsDealer_->Open(clsSQL().getDealerSQL(text), connection_, ado::CursorType::Static, ado::LockType::ReadOnly);
        if (!rebind)
            return;
        tdbDealerSelect_->Rebind();
        tdbDealerSelect_->selectRow(tdbDealerSelect_->currentIndex().row()); // F12 takes it: it has to show
    });
    failure_ = attempt.description();
    return !attempt.failed();
}

void frmDealerSelect::findDealer()
{
    if (!refreshDealerGrid(runtime::Trim(txtDealerName_->text())))
        tellFailure();
}

void frmDealerSelect::tellFailure()
{
    controls::MsgBox(QStringLiteral("거래처를 찾을 수 없습니다. 이유: ") + failure_, controls::InformationIcon,
                     QStringLiteral("거래처 검색"), isVisible() ? this : parentWidget());
}

void frmDealerSelect::choose()
{
    if (!rsDealer_ || !rsDealer_->hasCurrent())
        return;
    const qint32 lngCMPK = runtime::CLng(tdbDealerSelect_->columnValue(QStringLiteral("CM_PK")));
    const QString strName = runtime::text(tdbDealerSelect_->columnValue(QStringLiteral("CM_Name")));
    const QPointer<frmDealerSelect> self(this);
    emit evtDealerSelected(lngCMPK, strName);
    if (self)
        accept();
}

void frmDealerSelect::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    if (!event->spontaneous())
        (txtDealerName_->text().isEmpty() ? static_cast<QWidget *>(txtDealerName_) : tdbDealerSelect_)->setFocus();
}

bool frmDealerSelect::eventFilter(QObject *watched, QEvent *event)
{
    auto *control = static_cast<QWidget *>(watched);
    // A key that nobody took climbs to the parents; it counts where it was typed.
    if (event->type() == QEvent::KeyPress && (control->hasFocus() || control == this)
        && keyPressed(control, *static_cast<QKeyEvent *>(event)))
        return true;
    return QDialog::eventFilter(watched, event);
}

bool frmDealerSelect::keyPressed(const QWidget *control, const QKeyEvent &event)
{
    const bool vertical = event.key() == Qt::Key_Up || event.key() == Qt::Key_Down;
    if (vertical && event.modifiers().testFlag(Qt::ControlModifier)) {
        // Quirk (docs/architecture.md): both go back, down as well as up, unlike in the money dialogs.
        Qt::KeyboardModifiers state = event.modifiers();
        clearShiftCtrlKeys(state);
        sendTab(false, state & ~Qt::KeyboardModifiers(Qt::KeypadModifier));
        return true;
    }
    if (control == txtDealerName_ && nameKeyPressed(event))
        return true;
    QAbstractButton *pressed = event.key() == Qt::Key_F12 ? cmdOk_ : event.key() == Qt::Key_F9 ? cmdCancel_ : nullptr;
    if (control == tdbDealerSelect_ && isEnterKey(event) && rsDealer_ && rsDealer_->hasCurrent())
        pressed = cmdOk_;
    if (!pressed)
        return false;
    if (!event.isAutoRepeat())
        pressed->click();
    return true;
}

bool frmDealerSelect::nameKeyPressed(const QKeyEvent &event)
{
    if (isEnterKey(event) && !runtime::Trim(txtDealerName_->text()).isEmpty()) {
        chkcmdFindDealer_->setValue(1);
        return true;
    }
    int keyCode = event.key();
    arrowEnterToTab(keyCode);
    return keyCode == 0;
}
