#pragma once

namespace controls {

/// From here on the windows stay alive while a handler of theirs waits for a server: after a second the one in front shows
/// "다시 연결 중" at its foot, and they are painted, moved and sized. What the user types or clicks meanwhile is dropped,
/// timers stand, and a window that is closed gives the waiting up and closes when the handler has ended. For the program's
/// life; once more does nothing.
void showWaitingLine();

} // namespace controls
