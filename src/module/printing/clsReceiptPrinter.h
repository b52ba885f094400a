#pragma once

#include <QComboBox>
#include <QString>

/// Finds the printer of roll receipts.
class clsReceiptPrinter
{
public:
    /// The device name of this station's setting, as it stands and unchecked; under "<자동설정>" the printer that
    /// GetPrinterList finds.
    QString GetReceiptPrinter() const;
    /// Device name of the first of the system's printers whose page is less than 7000 twips (12.3 cm) wide, which tells a
    /// roll printer from a page printer. Empty when there is none, and from the first printer on that cannot tell its page.
    QString GetPrinterList() const;
    /// Adds every printer's device name to the box, in the system's order. True always.
    bool FillPrinterList(QComboBox &box) const;
};
