#include "sales/OrderStrip.h"

#include "forms/FormRow.h"
#include "platform/controls/DateEdit.h"
#include "platform/controls/Named.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>

using controls::named;
using controls::PushCheck;

namespace {

QDateEdit *makeDatePicker(const QString &name, const QString &caption, QWidget *parent)
{
    auto *picker = named(new controls::DateEdit(parent), name);
    picker->setAccessibleName(caption);
    return picker;
}

} // namespace

OrderStrip::OrderStrip(QWidget *parent)
    : QWidget(parent)
    , chkCmdPrintReceiptRollPrinter_(named(new PushCheck(QStringLiteral("영수증출력(롤프린터)"), this),
                                           QStringLiteral("chkCmdPrintReceiptRollPrinter")))
    , uxStartDateDTP_(makeDatePicker(QStringLiteral("uxStartDateDTP"), QStringLiteral("시작일"), this))
    , uxEndDateDTP_(makeDatePicker(QStringLiteral("uxEndDateDTP"), QStringLiteral("종료일"), this))
{
    chkCmdOrderMasterED_ =
        makePushChecks(QStringLiteral("chkCmdOrderMasterED"), {QStringLiteral("수정"), QStringLiteral("삭제")}, this);
    chkCmdPrintReceipt_ = makePushChecks(QStringLiteral("chkCmdPrintReceipt"),
                                         {QStringLiteral("영수증출력"), QStringLiteral("영수증기간별출력")}, this);
    placeButtons();

    uxEndDateDTP_->setDate(QDate::currentDate());
    uxStartDateDTP_->setDate(QDate::currentDate().addDays(-7));
}

void OrderStrip::placeButtons()
{
    auto *rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(2);
    letShrink({chkCmdOrderMasterED(0), chkCmdOrderMasterED(1), chkCmdPrintReceipt(0), chkCmdPrintReceipt(1),
               chkCmdPrintReceiptRollPrinter_});
    // An edit hides them; the others stay where they are.
    for (PushCheck *button : chkCmdOrderMasterED_)
        keepPlaceWhenHidden(button);

    auto *first = new QHBoxLayout;
    first->setSpacing(4);
    first->addWidget(chkCmdOrderMasterED(0));
    first->addSpacing(8);
    first->addWidget(chkCmdPrintReceipt(0));
    first->addWidget(chkCmdPrintReceiptRollPrinter_);
    first->addStretch(1);
    first->addWidget(chkCmdOrderMasterED(1));
    rows->addLayout(first);

    auto *second = new QHBoxLayout;
    second->setSpacing(4);
    second->addWidget(uxStartDateDTP_);
    second->addWidget(new QLabel(QStringLiteral("~"), this));
    second->addWidget(uxEndDateDTP_);
    second->addWidget(chkCmdPrintReceipt(1));
    second->addStretch(1);
    rows->addLayout(second);
}
