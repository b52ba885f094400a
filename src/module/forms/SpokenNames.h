#pragma once

#include <QWidget>

/// Names for a screen reader where captions are equal or need the place they stand in: what a control acts on, and what it
/// does. All other controls are called by their captions.
void giveSpokenNames(QWidget *window);
