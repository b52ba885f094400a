#pragma once

#include "platform/print/VSPrinter.h"

#include <QDialog>

/// The preview of a page receipt: modal and as large as the screen. Made for one showing.
class frmPrinter : public QDialog
{
    Q_OBJECT
public:
    explicit frmPrinter(QWidget *owner = nullptr);

    print::VSPrinter *vsPrint() const { return vsPrint_; }

private:
    print::VSPrinter *vsPrint_;
};
