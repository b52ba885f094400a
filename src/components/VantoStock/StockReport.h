#pragma once

#include "components/frame/ByKey.h"
#include "components/frame/Report.h"

#include <array>

namespace statistics {

/// Statements of the stock. [FROM] and [TO] are product keys, but for recent().
namespace stock {
/// PM_PK, PM_Catagory, PM_Name, PM_IsValid.
QString products();
QString productBounds();
/// PM_PK, BoughtOn, IN_UnitPrice, Incoming: each purchase, those of a product by day and price. Its last price is the highest
/// of its last day.
QString purchases();
QString purchaseBounds();
/// PM_PK, OrdD_OrderType (NULL and 0 sold, 1 service, 2 lost), Outgoing: pieces that left, what came back taken off.
QString outgoing();
QString outgoingBounds();
/// PM_PK, Recent: pieces of all kinds that left with the period's orders [FROM] to [TO].
QString recent(Summed summed);
} // namespace stock

/// The shelf as it is now, and how long it lasts at the rate of the days asked for.
class StockReport : public Report
{
public:
    enum Amount { Incoming, Sold, Service, Lost, Recent, LastPrice, Amounts };
    /// Days of stock from which on a product need not be looked at.
    static constexpr int enoughDays = 15;

    QString title() const override { return QStringLiteral("재고 통계"); }
    Asks asks() const override { return Asks::LastDay; }
    QStringList views() const override;
    std::vector<Figure> figures(const Period &period) override;

private:
    struct Product
    {
        QString category;
        QString name;
        bool isHandled = false;
        QString lastDay = {}; ///< of its purchases
        std::array<Sum, Amounts> sums{};

        Sum remaining() const;
        /// Whole days; nothing when nothing is left or nothing leaves.
        Cell daysLeft(int rateDays) const;
        /// What has to be looked at, in words; empty for nothing.
        QString state(int rateDays) const;
        /// What lies on the shelf at the last purchase price; nothing below zero.
        Sum worth() const;
    };

    Sheet makeSheet(int view) const override;
    /// Rows begin with their product's key; those of a product that is gone are passed over.
    Figure figureOf(const QString &statement, const QString &bounds,
                    std::function<void(Product &product, const Record &row)> take);
    static void takePurchase(Product &product, const Record &row);
    static void takeOutgoing(Product &product, const Record &row);
    std::vector<const Product *> shown(int view) const;
    Row rowOf(const Product &product) const;

    int rateDays_ = 1;
    ByKey<Product> products_;
};

} // namespace statistics
