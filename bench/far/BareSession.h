#pragma once

#include "bench/far/Traffic.h"

#include <QString>

#include <memory>

struct pg_conn;

namespace bench {

/// A session by nothing but PostgreSQL's own library. Raises std::runtime_error.
class BareSession
{
public:
    explicit BareSession(const QString &address); ///< "postgresql://..."

    /// Sends once more what a desk sent: together what went together, and what it waited for is waited for. Copies every cell
    /// of every answer. Each must be what the desk got: as many rows given or touched, and no error.
    struct Said
    {
        int waits;
        std::size_t cells; ///< bytes copied
    };
    Said send(const Traffic &traffic);

private:
    struct Hang
    {
        void operator()(pg_conn *session) const;
    };

    void send(const Sent &statement);
    void receive(const Sent &statement, const std::string &answer);
    [[noreturn]] void refuse(const std::string &why) const;

    std::unique_ptr<pg_conn, Hang> session_;
    std::string cells_;
};

} // namespace bench
