#pragma once

#include "platform/ado/Recordset.h"
#include "platform/print/Document.h"

#include <QByteArray>
#include <QString>

#include <vector>

/// The product list as it leaves the window, each value as a text.
struct PriceLine
{
    QString category;
    QString name;
    QString price; ///< digits without groups; empty for none
    QString taxed;
    QString valid;
    QString hidden;
    QString memo;
    QString added;
};

/// In the order of the rows. Raises RuntimeError.
std::vector<PriceLine> priceList(const ado::Recordset &products);
/// For a spreadsheet, under the headings that `desk --import` knows.
QByteArray priceListCsv(const std::vector<PriceLine> &lines);
/// On A4, a heading for each category; `shop` stands at the top.
print::Document priceListOnPaper(const std::vector<PriceLine> &lines, const QString &shop);
