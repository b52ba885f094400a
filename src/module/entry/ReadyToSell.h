#pragma once

#include "platform/ado/Connection.h"
#include "platform/ado/Foresight.h"

/// Whether a clinic's database is one in which a sale can be saved whole. Looked at once for each connection, before anything
/// is sold; where it is not, a box names what is wrong. `next` tells what is read behind.
bool isReadyToSell(const ado::ConnectionPtr &connection, ado::Foresight &next);
