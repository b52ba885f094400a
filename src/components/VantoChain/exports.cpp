#include "components/VantoChain/clsVantoChain.h"
#include "components/frame/ComponentServer.h"

ZELVO_STATISTIC_COMPONENT(VantoChain)
