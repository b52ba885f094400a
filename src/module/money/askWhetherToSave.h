#pragma once

#include <QString>
#include <QWidget>

/// Tells what another desk wrote to the order's ledger since the dialog opened, and asks whether to save all the same.
bool askWhetherToSave(const QString &changes, const QString &title, QWidget *owner);
