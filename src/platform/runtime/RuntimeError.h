#pragma once

#include "platform/runtime/Place.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <stdexcept>

namespace runtime {

/// Numbers of the errors that the system itself tells apart.
enum class ErrorNumber {
    InvalidCall = 5,
    Overflow = 6,
    TypeMismatch = 13,
    FileNotFound = 53,
    InvalidUseOfNull = 94,
    CannotCreateObject = 429,
    NoSuchMember = 438,
    WrongArguments = 450,
    NoCurrentRow = 3021,
    ObjectClosed = 3704,
    Conflict = -2147217864, ///< the row was changed by another station
    Database = -2147217900, ///< the server refused a statement
    ConnectionLost = -2147467259,
};

/// What a server said of an error.
struct ServerWords
{
    QByteArray state; ///< the SQL state, or the engine's own number
    QString text;
};

/// The one exception type of the system: a number and a Korean description fit for a message box. Copies are one error.
class RuntimeError : public std::runtime_error
{
public:
    /// For the log only, which shows no description: that may name a patient.
    struct Origin
    {
        QByteArray operations; ///< that it came out of
        Place raised;
        ServerWords server; ///< the text without what it quotes
        bool logged = false;
    };

    RuntimeError(ErrorNumber number, const QString &description, Place raised = Place::here());
    RuntimeError(ErrorNumber number, const QString &description, const ServerWords &server,
                 Place raised = Place::here());

    /// The same error, told to the user in other words.
    RuntimeError toldAs(ErrorNumber number, const QString &description) const;

    ErrorNumber number() const noexcept { return number_; }
    const QString &description() const noexcept { return description_; }
    Origin &origin() const noexcept { return *origin_; }

private:
    RuntimeError(ErrorNumber number, const QString &description, std::shared_ptr<Origin> origin);

    ErrorNumber number_;
    QString description_;
    std::shared_ptr<Origin> origin_;
};

} // namespace runtime
