#pragma once

#include "components/central/HeadOffice.h"
#include "platform/ado/Connection.h"

namespace central {

/// What was written.
struct Brought
{
    qsizetype added = 0, changed = 0, withdrawn = 0;
};

/// Whether the clinic's list is as the head office has it now.
bool isInStep(const ado::Connection &clinic, const HeadOffice &headOffice);

/// Brings it there in one transaction of its own, or in the host's that is open: all of it or nothing. Raises RuntimeError.
Brought bringIntoStep(ado::Connection &clinic, const HeadOffice &headOffice, const Progress &progress);

} // namespace central
