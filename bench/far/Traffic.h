#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bench {

/// A statement as a desk sent it.
struct Sent
{
    std::string text;
    std::vector<std::optional<std::string>> values; ///< nothing is NULL
    bool ends =
        false;    ///< behind it the desk asked for all the answers: of a run that fails before, nothing more is done
    int wait = 0; ///< the number of the one for its answer

    bool isSame(const Sent &other) const { return text == other.text && values == other.values && ends == other.ends; }
};

/// What a desk and its server said to each other.
struct Traffic
{
    int waits = 0;        ///< the desk said something after it had heard something: a way there and back
    bool dialled = false; ///< it began with the session
    std::vector<Sent> sent;
    std::vector<std::string> answers; ///< one to each statement: "SELECT 3", "UPDATE 1", "ERROR 42P01"
    std::size_t cells = 0;            ///< bytes in those of all rows
    bool isStrange = false;           ///< it cannot be said once more by what is kept here
    int session = 0;                  ///< which of the server's

    int statements() const { return int(sent.size()); }
    /// Behind the statement at that place the desk waited for all the answers. That one came while a run was being sent, on a
    /// busy machine, makes no wait.
    bool isAwaited(std::size_t at) const
    {
        return sent[at].ends && (at + 1 == sent.size() || sent[at + 1].wait != sent[at].wait);
    }
    std::vector<std::string> told() const; ///< the statements, each as "wait number: text"
};

/// Cuts what comes in one direction of a session into messages.
class Messages
{
public:
    enum class Beginning { Typed, Untyped };
    /// A desk's first message has no type.
    explicit Messages(Beginning beginning)
        : typed_(beginning == Beginning::Typed)
    {
    }

    struct Message
    {
        char type; ///< '\0' for none
        std::string_view body;
    };
    void add(std::string_view bytes);
    /// Valid until the next add; nothing when the next is not whole yet.
    std::optional<Message> next();

private:
    bool typed_;
    std::string bytes_;
    std::size_t at_ = 0;
};

/// Enters a message of a desk, or one of a server.
void enterAsked(Traffic &traffic, const Messages::Message &message);
void enterAnswered(Traffic &traffic, const Messages::Message &message);

} // namespace bench
