#include "components/VantoOneDay/clsVantoOneDay.h"
#include "components/frame/ComponentServer.h"

ZELVO_STATISTIC_COMPONENT(VantoOneDay)
