#pragma once

#include <QString>

namespace walk {

/// Walks the road of one sale from the desk on, through the same windows and controls as a user, on a fresh small clinic
/// at FOLDER/walk.db, then sets up an empty shop (FOLDER/new-shop.db) and sells from it; says each step on the terminal and
/// leaves pictures in the folder. Called with the application dressed and the component registered. Result: exit status, 0
/// when the road was walked to its end.
int walkTheRoad(const QString &folder);

} // namespace walk
