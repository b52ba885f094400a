#include "sales/frmRefund.h"

#include "forms/clsNumberRelated.h"
#include "forms/modKeyBoard.h"
#include "platform/controls/Appearance.h"
#include "platform/controls/EventEdge.h"
#include "platform/controls/MessageBox.h"
#include "platform/controls/Modal.h"
#include "platform/controls/ShowText.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/RuntimeError.h"
#include "settings/clsWindowPostion.h"
#include "settings/modFormLocate.h"

#include <QKeyEvent>
#include <QScreen>

using runtime::Currency;

frmRefund::frmRefund(QWidget *owner)
    : QDialog(owner)
{
    createControls();
    controls::onEvent(udNoOfProdPlusMinus_, &controls::Stepper::up, this, [this] { step(1); });
    controls::onEvent(udNoOfProdPlusMinus_, &controls::Stepper::down, this, [this] { step(-1); });
    controls::onEvent(txtRfndUnitCount_, &QLineEdit::textChanged, this, [this](const QString &) { colorCount(); });
    chkCmdSave_->onPush(this, [this] { save(); });
    chkCmdCancel_->onPush(this, [this] { reject(); });
}

qint16 frmRefund::ShowRefundForm(const QString &strUnitName, Currency curUnitPrice, Currency curUnitDiscount,
                                 qint16 intUnitCount, const QDate &dtUnitSold, const QWidget *ownerButton,
                                 qint16 &intRfndUnitCount, QDate &dtRfnd, QString &strRfndMemo,
                                 Currency &curRfndUnitSalePrice)
{
    bSaved_ = false;
    intUnitCount_ = intUnitCount;
    dtpUnitSoldDate_->setDate(dtUnitSold);
    controls::showText(txtUnitName_, strUnitName);
    txtUnitPrice_->setText(runtime::money(curUnitPrice));
    txtUnitDiscount_->setText(runtime::money(curUnitDiscount));
    txtUnitCount_->setText(QString::number(intUnitCount));
    dtpRfndDate_->setDate(QDate::currentDate());
    txtRfndUnitCount_->setText(QString::number(-intUnitCount));
    showMoney(txtRfndUnitSalePrice_, (curUnitPrice - curUnitDiscount).toText());
    txtRfndMemo_->clear();

    setWindowModality(Qt::ApplicationModal);
    adjustSize();
    if (ownerButton)
        placeBeside(*ownerButton);
    txtRfndUnitCount_->setFocus(Qt::OtherFocusReason); // what most often differs; the date is today
    if (!controls::runModal(this) || !bSaved_)
        return 0;

    intRfndUnitCount = runtime::CInt(txtRfndUnitCount_->text());
    dtRfnd = dtpRfndDate_->date();
    strRfndMemo = runtime::Trim(txtRfndMemo_->text());
    curRfndUnitSalePrice = runtime::CCur(clsNumberRelated().GetPureNumber(txtRfndUnitSalePrice_->text()));
    return 1;
}

/// Enter moves on, as in the other dialogs; it never presses a button.
void frmRefund::keyPressEvent(QKeyEvent *event)
{
    int keyCode = event->key();
    enterToTab(keyCode);
    if (keyCode != 0)
        QDialog::keyPressEvent(event);
}

/// Between minus the sold quantity and 0; what is typed is not held to it.
void frmRefund::step(int by)
{
    const double count = runtime::Val(txtRfndUnitCount_->text());
    if (by < 0 ? count > -intUnitCount_ : count < 0)
        txtRfndUnitCount_->setText(runtime::text(count + by));
}

void frmRefund::colorCount()
{
    const bool negative = runtime::Val(txtRfndUnitCount_->text()) < 0;
    controls::setInk(txtRfndUnitCount_, negative ? controls::Ink::Negative : controls::Ink::Plain);
}

void frmRefund::save()
{
    try {
        runtime::CInt(txtRfndUnitCount_->text());
    } catch (const runtime::RuntimeError &) {
        const QPointer<frmRefund> self(this);
        controls::MsgBox(QStringLiteral("반품 수량을 숫자로 입력하십시오.\n예: 1개 반품은 -1"),
                         controls::InformationIcon, windowTitle(), this);
        if (self)
            txtRfndUnitCount_->setFocus(Qt::OtherFocusReason);
        return;
    }
    bSaved_ = true;
    accept();
}

/// To the right of the button, else below or above it; wholly on its screen.
void frmRefund::placeBeside(const QWidget &button)
{
    constexpr int gap = 8;
    const clsWindowPostion positions;
    qint32 x = 0;
    qint32 y = 0;
    positions.GetScreenPosition(button, x, y);
    const QRect beside(positions.pixelsFromTwips(button, x, y), button.size());
    const QRect screen = button.screen()->availableGeometry();
    // The desktop frames the dialog as it frames the window that it comes from.
    const QSize outer = size() + button.window()->frameSize() - button.window()->size();

    QPoint place(beside.right() + 1 + gap, beside.top());
    if (place.x() + outer.width() > screen.right() + 1) {
        place = QPoint(beside.left(), beside.bottom() + 1 + gap);
        if (place.y() + outer.height() > screen.bottom() + 1)
            place.setY(beside.top() - gap - outer.height());
    }
    move(place);
    keepOnScreen(*this);
}
