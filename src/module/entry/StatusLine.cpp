#include "entry/StatusLine.h"

#include "data/WonText.h"
#include "platform/controls/Appearance.h"
#include "platform/controls/Named.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Conversions.h"

using controls::named;
using runtime::Currency;

StatusLine::StatusLine(QStatusBar *bar)
    : QObject(bar)
    , customer_(new QLabel)
    , done_(named(new QLabel, QStringLiteral("lblDone")))
    , owed_(named(new QLabel, QStringLiteral("lblOwed")))
{
    // Not a message of the bar: every menu that the mouse passes over would wipe that away.
    bar->addWidget(customer_, 1);
    bar->addPermanentWidget(done_, 2);
    bar->addPermanentWidget(owed_);
    for (QLabel *label : {customer_, done_, owed_})
        label->setTextFormat(Qt::PlainText);
    // A long name of a product must not widen the window.
    done_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    done_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    owed_->hide();                                      // an empty one would still keep its margin
    controls::setGround(owed_, controls::Ground::Face); // a host of dark windows may have a light bar
    controls::setInk(owed_, controls::Ink::Owed);
}

void StatusLine::tell(const QString &done)
{
    done_->setText(done);
    done_->setToolTip(done);
}

void StatusLine::showOwed(const SaleSession::RecordsetPtr &orders)
{
    Currency sum;
    int count = 0;
    const bool open = orders && orders->isOpen();
    const int column = open ? orders->columnIndex(QStringLiteral("OrdM_Misugum")) : -1;
    for (int row = 0; open && row < orders->rowCount(); ++row) {
        runtime::Attempt read(runtime::Attempt::Failure::IsAnswer); // another desk deleted the order
        read([&] {
            const QVariant owed = orders->valueAt(row, column);
            const Currency money = runtime::isNull(owed) ? Currency() : runtime::CCur(owed);
            sum += money;
            count += money.isZero() ? 0 : 1;
        });
    }
    owed_->setText(count == 0 ? QString() : QStringLiteral("미수금 %1 · 거래 %2건").arg(wonText(sum)).arg(count));
    owed_->setVisible(count != 0);
}
