#include "printing/frmPrinter.h"

frmPrinter::frmPrinter(QWidget *owner)
    : print::Preview(QStringLiteral("영수증출력"), owner)
{
    setObjectName(QStringLiteral("frmPrinter"));
}
