#pragma once

#include "platform/controls/MessageBox.h"

#include <QList>
#include <QString>

#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

/// Stands in for the person who answers message boxes: answers from a queue, Confirm when the queue is empty and the box
/// has one button, and keeps what was asked. A question without an answer in the queue answers No.
class MessageRecorder
{
public:
    struct Message
    {
        QString text;
        int flags;
        QString title;
        QString remark;
    };

    MessageRecorder()
    {
        controls::setMessageHandler(
            [this](const QString &text, int flags, const QString &title, const QString &remark) {
                messages.append({text, flags, title, remark});
                if (const auto act = std::exchange(whileItStands, {}))
                    act();
                if (answers.empty())
                    return flags & 0xF ? controls::Answer::No : controls::Answer::Confirm;
                const controls::Answer answer = answers.front();
                answers.pop_front();
                return answer;
            });
    }
    ~MessageRecorder() { controls::setMessageHandler({}); }
    MessageRecorder(const MessageRecorder &) = delete;
    MessageRecorder &operator=(const MessageRecorder &) = delete;

    QStringList texts() const
    {
        QStringList all;
        for (const Message &message : messages)
            all << message.text;
        return all;
    }
    /// "title: text" of the boxes so far, a remark in braces behind it; forgets them.
    std::vector<std::string> take()
    {
        std::vector<std::string> said;
        for (const Message &message : std::exchange(messages, {}))
            said.push_back((message.title + QStringLiteral(": ") + message.text
                            + (message.remark.isEmpty() ? QString() : QStringLiteral(" {%1}").arg(message.remark)))
                               .toStdString());
        return said;
    }

    /// What happens once while the next box stands.
    std::function<void()> whileItStands;
    std::deque<controls::Answer> answers;
    QList<Message> messages;
};
