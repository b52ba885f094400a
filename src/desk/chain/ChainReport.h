#pragma once

#include "platform/ado/Connection.h"

class QWidget;

namespace ado {
class Foresight;
}

namespace chain {

/// What seesClinics() will read.
void foreseeClinics(ado::Foresight &next);
/// Whether the database is a head office's that sees its clinics (head-office.sql), and this desk's role may ask.
bool seesClinics(const ado::ConnectionPtr &connection);

/// The chain's report as a window that goes when it is closed, still to be shown. Raises RuntimeError.
QWidget *openReport(const ado::ConnectionPtr &connection);

} // namespace chain
