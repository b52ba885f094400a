#pragma once

#include "components/frame/Report.h"

#include <array>
#include <map>

namespace statistics {

/// Statements of the stock. [FROM] and [TO] are product keys, but for recent().
namespace stock {
/// PM_PK, PM_Catagory, PM_Name, PM_IsValid.
QString products();
QString productBounds();
/// PM_PK, Incoming: pieces bought.
QString incoming();
QString incomingBounds();
/// PM_PK, Sold (what came back taken off), Service, Lost: pieces that left, by the kind of line.
QString outgoing();
QString outgoingBounds();
/// PM_PK, LastPrice: the price of a piece at the last purchase; the highest where a day saw several.
QString lastPrice();
/// PM_PK, Recent: pieces of all kinds that left with the period's orders [FROM] to [TO].
QString recent();
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
    /// Adds the amounts that follow the product in the statement.
    Figure figureOf(std::vector<Amount> amounts, const QString &statement, Figure::Slices slices,
                    const QString &bounds = {});
    std::vector<const Product *> shown(int view) const;
    Row rowOf(const Product &product) const;

    int rateDays_ = 1;
    std::map<int, Product> products_;
};

} // namespace statistics
