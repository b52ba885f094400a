#pragma once

#include "platform/ado/Connection.h"

/// The chain's head office as the desk knows it: a component that is created and called by name.
namespace chain {

/// Where the clinic's settings name our own central product server, tells it whose products are meant; before each call of
/// the sale module, which may ask it.
void attend(const ado::ConnectionPtr &clinic);

/// Both raise RuntimeError and answer with what was done.
QString link(const ado::ConnectionPtr &clinic, const QString &address);
QString makeHeadOffice(const ado::ConnectionPtr &connection);

} // namespace chain
