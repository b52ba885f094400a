#pragma once

#include "platform/print/VSPrinter.h"

#include <QDialog>

namespace print {

/// Where a user's choice of printer is remembered; nowhere by itself.
struct PrinterMemory
{
    QString application;
    QString section;
};

/// The window around every preview: modal and as large as the screen; its caption tells the page. It opens with the printer
/// that the user chose last, where that still exists. Made for one showing.
class PreviewWindow : public QDialog
{
    Q_OBJECT
public:
    PreviewWindow(QWidget *owner, const QString &caption, const PrinterMemory &memory);

    VSPrinter *vsPrint() const { return vsPrint_; }

private:
    VSPrinter *vsPrint_;
};

} // namespace print
