#pragma once

#include <QString>

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

/// The one exception type of the system: a number and a Korean description fit for a message box.
class RuntimeError : public std::runtime_error
{
public:
    RuntimeError(ErrorNumber number, const QString &description)
        : std::runtime_error(description.toStdString())
        , number_(number)
        , description_(description)
    {
    }

    ErrorNumber number() const noexcept { return number_; }
    const QString &description() const noexcept { return description_; }

private:
    ErrorNumber number_;
    QString description_;
};

} // namespace runtime
