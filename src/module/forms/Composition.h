#pragma once

#include <QInputMethodEvent>
#include <QString>

#include <utility>

/// The syllable that an input method has not committed yet to a text box.
class Composition
{
public:
    void follow(const QInputMethodEvent &event) { pending_ = event.preeditString(); }
    /// The text was changed, by the input method or by code: there is no syllable left.
    void end() { pending_.clear(); }
    /// The focus leaves: the syllable is taken as it stands, also where the input method does not commit it by itself, for
    /// the button that was pressed saves what the user sees. `take` is the box's own way of taking the event.
    template <typename Take>
    void commit(Take take)
    {
        if (pending_.isEmpty())
            return;
        QInputMethodEvent event;
        event.setCommitString(std::exchange(pending_, QString()));
        take(&event);
    }

private:
    QString pending_;
};
