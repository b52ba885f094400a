#pragma once

#include "components/VantoSalesPeriod/SalesPeriodReport.h"
#include "components/frame/StatComponent.h"

/// The component "기간별 매출 통계".
class clsVantoSalesPeriod : public statistics::StatComponent
{
    Q_OBJECT
public:
    clsVantoSalesPeriod()
        : StatComponent([] { return std::make_unique<statistics::SalesPeriodReport>(); })
    {
    }
};
