#pragma once

#include "components/VantoSalesItem/SalesItemReport.h"
#include "components/frame/StatComponent.h"

/// The component "물품별 매출 통계".
class clsVantoSalesItem : public statistics::StatComponent
{
    Q_OBJECT
public:
    clsVantoSalesItem()
        : StatComponent([] { return std::make_unique<statistics::SalesItemReport>(); })
    {
    }
};
