#pragma once

#include "components/VantoOneDay/OneDayReport.h"
#include "components/frame/StatComponent.h"

/// The component "일일 통계".
class clsVantoOneDay : public statistics::StatComponent
{
    Q_OBJECT
public:
    clsVantoOneDay()
        : StatComponent([] { return std::make_unique<statistics::OneDayReport>(); })
    {
    }
};
