#include "printing/frmPrinter.h"

frmPrinter::frmPrinter(QWidget *owner)
    : print::PreviewWindow(owner, QStringLiteral("영수증출력"),
                           {QStringLiteral("Zelvo Desk"), QStringLiteral("물품판매관리")})
{
    setObjectName(QStringLiteral("frmPrinter"));
}
