#pragma once

#include "platform/print/PreviewWindow.h"

/// The preview of a page receipt: modal and as large as the screen. Made for one showing.
class frmPrinter : public print::PreviewWindow
{
    Q_OBJECT
public:
    explicit frmPrinter(QWidget *owner = nullptr);
};
