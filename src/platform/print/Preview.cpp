#include "platform/print/Preview.h"

#include "platform/controls/Named.h"

#include <QVBoxLayout>

namespace print {

Preview::Preview(const QString &title, QWidget *owner)
    : QDialog(owner)
    , vsPrint_(controls::named(new VSPrinter(this), QStringLiteral("vsPrint")))
{
    setWindowTitle(title);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setWindowState(Qt::WindowMaximized);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(vsPrint_);
    connect(vsPrint_, &VSPrinter::closeAsked, this, &QDialog::reject);
    vsPrint_->setFocus();
}

} // namespace print
