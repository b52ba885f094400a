#pragma once

#include "platform/print/Preview.h"

/// The preview of a page receipt.
class frmPrinter : public print::Preview
{
    Q_OBJECT
public:
    explicit frmPrinter(QWidget *owner = nullptr);
};
