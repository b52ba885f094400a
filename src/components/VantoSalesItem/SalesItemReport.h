#pragma once

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
QString linesByProduct();
} // namespace salesItem

/// Sales of a period by product or by product group.
class SalesItemReport : public Report
{
public:
    /// Columns behind the names.
    enum Amount { Sold, Service, Lost, Returned, Net, Amounts };

    QString title() const override { return QStringLiteral("물품별 매출 통계"); }
    QStringList views() const override { return {QStringLiteral("물품별"), QStringLiteral("분류별")}; }
    std::vector<Figure> figures(const Period &period) override;

private:
    using Sums = std::array<Sum, Amounts>;
    struct Product
    {
        QString category;
        QString name;
    };
    struct Line
    {
        Product product;
        Sums sums{};
    };

    Sheet makeSheet(int view) const override;
    std::vector<Line> linesByProduct() const;
    std::vector<Line> linesByCategory() const;

    std::map<int, Product> products_;
    std::map<int, Sums> sums_;
};

} // namespace statistics
