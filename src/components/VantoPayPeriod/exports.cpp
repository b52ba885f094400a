#include "components/VantoPayPeriod/clsVantoPayPeriod.h"
#include "components/frame/ComponentServer.h"

ZELVO_STATISTIC_COMPONENT(VantoPayPeriod)
