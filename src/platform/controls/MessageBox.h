#pragma once

#include <QString>
#include <QWidget>

#include <functional>

namespace controls {

/// Flags of a message box, added up.
enum MessageFlag : int {
    ConfirmOnly = 0,
    YesNoCancel = 3,
    YesNo = 4,
    QuestionIcon = 32,
    WarningIcon = 48,
    InformationIcon = 64,
    SecondButtonDefault = 256, ///< Enter answers with the second button
};

enum class Answer { Confirm = 1, Cancel = 2, Yes = 6, No = 7 };

/// Shows a modal box with Korean buttons; the text is plain, line breaks stand as they are. An empty title bears the title
/// of the active window. The keys Y and N answer Yes and No. Closing a box with Yes and No by Esc answers No, with a Cancel button Cancel;
/// so does a box that goes with its window. Whoever opened it may have gone with the window as well.
/// A remark stands below the text, where the text itself is settled and says too little.
Answer MsgBox(const QString &text, int flags = ConfirmOnly, const QString &title = QString(), QWidget *owner = nullptr,
              const QString &remark = QString());

/// Replaces the box, for tests and trial runs; an empty function brings it back.
using MessageHandler =
    std::function<Answer(const QString &text, int flags, const QString &title, const QString &remark)>;
void setMessageHandler(MessageHandler handler);

} // namespace controls
