#include "bench/far/Traffic.h"

#include <arpa/inet.h>

#include <cstdint>
#include <cstring>

namespace bench {

namespace {

/// A message's fields, one after the other; numbers come with their highest byte first.
class Fields
{
public:
    explicit Fields(std::string_view body)
        : rest_(body)
    {
    }

    std::string_view bytes(std::size_t count)
    {
        const std::string_view taken = rest_.substr(0, count);
        rest_.remove_prefix(taken.size());
        return taken;
    }
    std::string_view text()
    {
        const std::string_view taken = rest_.substr(0, rest_.find('\0'));
        bytes(taken.size() + 1);
        return taken;
    }
    int shortNumber()
    {
        std::uint16_t number = 0;
        copy(&number, sizeof number);
        return ntohs(number);
    }
    std::int32_t number()
    {
        std::uint32_t number = 0;
        copy(&number, sizeof number);
        return std::int32_t(ntohl(number));
    }

private:
    void copy(void *to, std::size_t size)
    {
        const std::string_view from = bytes(size);
        std::memcpy(to, from.data(), from.size());
    }

    std::string_view rest_;
};

/// Of a statement without a name, of which each parameter's type is left to the server.
bool enterParse(Traffic &traffic, Fields fields)
{
    const bool named = !fields.text().empty();
    Sent sent;
    sent.text = fields.text();
    sent.wait = traffic.waits;
    traffic.sent.push_back(std::move(sent));
    return !named && fields.shortNumber() == 0;
}

/// All values, and all cells of the answer, as texts.
bool enterBind(Traffic &traffic, Fields fields)
{
    const bool named = !fields.text().empty() || !fields.text().empty();
    bool texts = true;
    const auto readFormats = [&] {
        for (int left = fields.shortNumber(); left > 0; --left)
            texts = fields.shortNumber() == 0 && texts;
    };
    readFormats();
    for (int left = fields.shortNumber(); left > 0; --left) {
        const std::int32_t size = fields.number();
        auto &value = traffic.sent.back().values.emplace_back();
        if (size >= 0)
            value = std::string(fields.bytes(std::size_t(size)));
    }
    readFormats();
    return !named && texts;
}

/// Behind the number of cells, and before each its size.
std::size_t cellBytes(std::string_view row)
{
    const int cells = Fields(row).shortNumber();
    return row.size() - sizeof(std::uint16_t) - std::size_t(cells) * sizeof(std::uint32_t);
}

std::string errorCode(Fields fields)
{
    for (;;) {
        const std::string_view field = fields.text();
        if (field.empty() || field[0] == 'C')
            return std::string(field.substr(field.empty() ? 0 : 1));
    }
}

} // namespace

std::vector<std::string> Traffic::told() const
{
    std::vector<std::string> all;
    for (const Sent &one : sent)
        all.push_back(std::to_string(one.wait) + ": " + one.text);
    return all;
}

void Messages::add(std::string_view bytes)
{
    bytes_.erase(0, at_);
    at_ = 0;
    bytes_ += bytes;
}

std::optional<Messages::Message> Messages::next()
{
    const std::string_view rest = std::string_view(bytes_).substr(at_);
    const std::size_t head = typed_ ? 1 : 0;
    std::uint32_t length = 0;
    if (rest.size() < head + sizeof length)
        return {};
    std::memcpy(&length, rest.data() + head, sizeof length);
    const std::size_t whole = head + ntohl(length);
    if (rest.size() < whole)
        return {};
    at_ += whole;
    const char type = typed_ ? rest[0] : '\0';
    typed_ = true;
    return Message{type, rest.substr(0, whole).substr(head + sizeof length)};
}

void enterAsked(Traffic &traffic, const Messages::Message &message)
{
    const Fields fields(message.body);
    const bool isOpen = !traffic.sent.empty() && !traffic.sent.back().ends;
    bool known = true;
    switch (message.type) {
    case '\0':
        traffic.dialled = true;
        break;
    case 'P':
        known = enterParse(traffic, fields);
        break;
    case 'B':
        known = isOpen && enterBind(traffic, fields);
        break;
    case 'S':
        known = isOpen;
        if (isOpen)
            traffic.sent.back().ends = true;
        break;
    case 'D': // what columns come; and run it: both go with every statement
    case 'E':
        known = isOpen;
        break;
    case 'X': // farewell
        break;
    default:
        known = false;
    }
    traffic.isStrange = traffic.isStrange || !known;
}

void enterAnswered(Traffic &traffic, const Messages::Message &message)
{
    if (message.type == 'D')
        traffic.cells += cellBytes(message.body);
    else if (message.type == 'C')
        traffic.answers.emplace_back(Fields(message.body).text());
    else if (message.type == 'I')
        traffic.answers.emplace_back();
    else if (message.type == 'E')
        traffic.answers.push_back("ERROR " + errorCode(Fields(message.body)));
}

} // namespace bench
