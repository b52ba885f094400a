#include "printing/frmPrinter.h"

#include "platform/controls/Named.h"

#include <QVBoxLayout>

frmPrinter::frmPrinter(QWidget *owner)
    : QDialog(owner)
    , vsPrint_(controls::named(new print::VSPrinter(this), QStringLiteral("vsPrint")))
{
    setObjectName(QStringLiteral("frmPrinter"));
    setWindowTitle(QStringLiteral("영수증출력"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(vsPrint_);
    connect(vsPrint_, &print::VSPrinter::closeAsked, this, &QDialog::reject);
    vsPrint_->setFocus();
}
