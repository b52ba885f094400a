#include "platform/print/PreviewWindow.h"

#include "platform/controls/EventEdge.h"
#include "platform/controls/Named.h"
#include "platform/registry/AppSettings.h"

#include <QVBoxLayout>

namespace print {

namespace {

const QString memoryKey = QStringLiteral("미리보기프린터");

QString paperKey(const QString &printer)
{
    return QStringLiteral("미리보기용지 ") + printer;
}

} // namespace

PreviewWindow::PreviewWindow(QWidget *owner, const QString &caption, const PrinterMemory &memory)
    : QDialog(owner)
    , vsPrint_(controls::named(new VSPrinter(this), QStringLiteral("vsPrint")))
{
    setWindowTitle(caption);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setWindowState(Qt::WindowMaximized);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(vsPrint_);
    connect(vsPrint_, &VSPrinter::closeAsked, this, &QDialog::reject);
    connect(vsPrint_, &VSPrinter::pageShown, this, [this, caption](int page, int count) {
        setWindowTitle(count > 1 ? QStringLiteral("%1 - %2 / %3쪽").arg(caption).arg(page).arg(count) : caption);
    });
    vsPrint_->setDevice(registry::GetSetting(memory.application, memory.section, memoryKey));
    controls::onEvent(vsPrint_, &VSPrinter::printerChosen, this, [memory](const QString &printer) {
        registry::SaveSetting(memory.application, memory.section, memoryKey, printer);
    });
    vsPrint_->setPaperMemory([memory](const QString &printer) {
        return registry::GetSetting(memory.application, memory.section, paperKey(printer));
    });
    controls::onEvent(vsPrint_, &VSPrinter::paperChosen, this, [memory](const QString &printer, const QString &paper) {
        registry::SaveSetting(memory.application, memory.section, paperKey(printer), paper);
    });
    vsPrint_->setFocus();
}

} // namespace print
