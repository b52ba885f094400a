#pragma once

#include "platform/controls/RecordsetGrid.h"

#include <QList>

/// The column layouts that a user made, one file a grid in the program's folder; only the four grids of the sale tab have
/// one. Grids are told by their object name.

/// Takes the grid's saved layout, if there is one, and saves every later change of the user's.
void keepGridLayout(controls::RecordsetGrid &grid);
/// The button "그리드 리셋": asks, deletes the layout files and tells the user to start anew.
void resetGridLayouts(const QList<controls::RecordsetGrid *> &grids);
