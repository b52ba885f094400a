#pragma once

#include "platform/print/Document.h"
#include "printing/ReceiptLines.h"
#include "settings/clsProperties.h"

#include <QString>

#include <vector>

/// The one shape of both page receipts: an A4 page, a head with the shop's data, two rows for every line, the money rows
/// and the shop's notice. The two differ by a table of columns and texts.
class PageReceipt
{
public:
    struct Shape
    {
        std::vector<const char16_t *> columnWidths;
        QString headDashes;
        QString moneyDashes;
        int nameColumn;   ///< spans 2; the kind of sale follows it
        int moneyLabel;   ///< column of the money rows' labels, which span 3
        int customerSpan; ///< of the rows with the customer and the date of issue
    };

    explicit PageReceipt(const Shape &shape);

    /// Rows 1 to 9.
    void addHead(const QString &customerLine);
    /// The two rows of one line; a date stands in column 1 when the shape has room for it.
    void addLine(const receipt::Line &line, const QString &dateText = QString());
    void addMoneyRows(const receipt::LedgerTotals &totals);
    print::Document take();

private:
    void addShop();
    void addColumnTitles();
    void setSizes();
    int insertRow();
    void put(int row, int column, int span, const QString &text, print::Align align = print::Align::Left);
    void addMoney(const QString &label, runtime::Currency amount, bool bold);
    void addDashes(bool right);

    int lastColumn() const { return int(shape_.columnWidths.size()); }

    Shape shape_;
    print::PageTable table_;
    clsProperties properties_;
    receipt::Sums sums_;
    qint16 intRow_ = 9;
};
