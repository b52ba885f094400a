#include "session/SaleSession.h"
