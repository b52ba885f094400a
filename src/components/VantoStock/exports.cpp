#include "components/VantoStock/clsVantoStock.h"
#include "components/frame/ComponentServer.h"

ZELVO_STATISTIC_COMPONENT(VantoStock)
