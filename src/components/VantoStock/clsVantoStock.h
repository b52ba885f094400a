#pragma once

#include "components/VantoStock/StockReport.h"
#include "components/frame/StatComponent.h"

/// The component "재고 통계".
class clsVantoStock : public statistics::StatComponent
{
    Q_OBJECT
public:
    clsVantoStock()
        : StatComponent([] { return std::make_unique<statistics::StockReport>(); })
    {
    }
};
