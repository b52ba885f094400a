#pragma once

#include "components/VantoPayPeriod/PayPeriodReport.h"
#include "components/frame/StatComponent.h"

/// The component "기간별 수납 통계".
class clsVantoPayPeriod : public statistics::StatComponent
{
    Q_OBJECT
public:
    clsVantoPayPeriod()
        : StatComponent([] { return std::make_unique<statistics::PayPeriodReport>(); })
    {
    }
};
