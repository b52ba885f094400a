#include "components/VantoSalesPeriod/clsVantoSalesPeriod.h"
#include "components/frame/ComponentServer.h"

ZELVO_STATISTIC_COMPONENT(VantoSalesPeriod)
