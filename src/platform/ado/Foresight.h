#pragma once

#include "platform/ado/Recordset.h"

#include <memory>
#include <vector>

namespace ado {

/// What is going to be read next, in its order, so that a server far away answers it in one go. It is read all the same by
/// whoever reads it; as soon as something else is sent, some time has passed, or this has gone, it is asked for anew. Within
/// another it may tell once more what that has told, and what has come stays.
class Foresight
{
public:
    enum class Behind {
        Statement, ///< the next, or the first of what is told
        Commit,    ///< each that ends a transaction, as long as this stands
    };
    explicit Foresight(ConnectionPtr connection, Behind behind = Behind::Statement);
    ~Foresight();
    Foresight(Foresight &&) noexcept;
    Foresight &operator=(Foresight &&) = delete;

    /// Whether answers are waited for.
    bool isOfUse() const { return d != nullptr; }
    /// Whether all answers came late, ten milliseconds at the least: in every wait there is time for something.
    bool isOfFarServer() const;
    /// As Recordset::Open will be called, with its rows on the server's side.
    Foresight &open(const QString &source, CursorType cursor);
    /// As the list will read that row when it becomes current, or is read again.
    Foresight &row(const Recordset &list, int row);
    /// As Connection::holdRow will be called. A lock that another desk holds is waited for once.
    Foresight &hold(const QString &table, const QString &key, qint32 value, const QString &also = {});
    /// As Connection::read will be called.
    Foresight &read(const QString &statement);
    /// Asks for what is told and has not come, and waits for it no sooner than it is read: what is done before that is done
    /// while it travels.
    void send();
    /// Keys of the rows of a list that has come and was not opened yet, as they came; empty where it has not.
    std::vector<qint32> keysThatCame(const QString &source) const;

private:
    void add(const std::vector<Command> &readings);

    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace ado
