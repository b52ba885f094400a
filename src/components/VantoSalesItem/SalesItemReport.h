#pragma once

#include "components/VantoSalesItem/MonthTable.h"
#include "components/frame/ByKey.h"
#include "components/frame/KeptTexts.h"
#include "components/frame/Report.h"

#include <array>
#include <map>

namespace statistics {

/// Statements of the sales by product.
namespace salesItem {
/// PM_PK, PM_Catagory, PM_Name of the products [FROM] to [TO].
QString products();
QString productBounds();
/// PM_PK, then sums over the lines of the period's orders [FROM] to [TO]: the pieces Sold, Service and Lost of the line
/// kinds, Returned (negative) of normal lines that came back, and Net, the money of all of them.
QString linesByProduct(Summed summed);
/// The same for each order: OrdM_PK, Cust_PK and OrdM_Date come first.
QString linesByOrder(const QString &condition = {});
/// PM_PK and Net alone.
QString netByProduct(Summed summed);
} // namespace salesItem

/// Sales of a period by product, by product group, or by product and month.
class SalesItemReport : public Report
{
public:
    /// Columns behind the names.
    enum Amount { Sold, Service, Lost, Returned, Net, Amounts };

    QString title() const override { return QStringLiteral("물품별 매출 통계"); }
    QStringList views() const override
    {
        return {QStringLiteral("물품별"), QStringLiteral("분류별"), QStringLiteral("월별")};
    }
    std::vector<Figure> figures(const Period &period) override;
    int readingOf(int view) const override { return view == MonthView ? 1 : 0; }
    std::vector<Figure> figuresOf(int view, const Period &period) override;
    bool tellsOrders() const override { return true; }
    std::optional<Behind> behind(int view, int row, int column) const override;

private:
    enum View { ProductView, CategoryView, MonthView };
    using Sums = std::array<Sum, Amounts>;
    struct Product
    {
        QString category;
        QString name;
    };
    /// In UTF-8, in texts_: of twenty thousand products a report shows some.
    struct KeptProduct
    {
        QByteArrayView category;
        QByteArrayView name;
    };
    struct Line
    {
        Product product;
        Sums sums{};
        std::vector<int> keys; ///< of all products that it stands for
    };

    Figure productNames();
    Product productOf(int key) const;
    std::vector<Line> linesByProduct() const;
    std::vector<Line> linesByCategory() const;
    /// As they stand in the sheet.
    std::vector<Line> linesOf(int view) const;
    Sheet makeSheet(int view) const override;
    Sheet monthSheet() const;

    Period period_;
    ByKey<KeptProduct> products_;
    KeptTexts texts_;
    QByteArrayView category_; ///< the last, which many products share
    ByKey<Sums> sums_;
    MonthTable months_;
};

} // namespace statistics
