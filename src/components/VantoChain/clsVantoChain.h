#pragma once

#include "components/VantoChain/ChainReport.h"
#include "components/frame/StatComponent.h"

/// The component "체인 통계".
class clsVantoChain : public statistics::StatComponent
{
    Q_OBJECT
public:
    clsVantoChain()
        : StatComponent([] { return std::make_unique<statistics::ChainReport>(); })
    {
    }
};
