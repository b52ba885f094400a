#include "components/VantoSalesItem/clsVantoSalesItem.h"
#include "components/frame/ComponentServer.h"

ZELVO_STATISTIC_COMPONENT(VantoSalesItem)
