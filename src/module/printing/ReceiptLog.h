#pragma once

#include "platform/print/Document.h"

#include <QString>

/// A line of the log for a receipt that a printer was given: which one, on what. No name gets there, of a patient or of a
/// file.
void logReceipt(const QString &which, const QString &device, const print::Document &receipt);
