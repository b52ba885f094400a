#include "platform/runtime/RuntimeError.h"

#include "platform/runtime/LogText.h"
#include "platform/runtime/Operation.h"

#include <utility>

namespace runtime {

RuntimeError::RuntimeError(ErrorNumber number, const QString &description, Place raised)
    : RuntimeError(number, description, ServerWords(), raised)
{
}

RuntimeError::RuntimeError(ErrorNumber number, const QString &description, const ServerWords &server, Place raised)
    : RuntimeError(number, description,
                   std::make_shared<Origin>(
                       Origin{Operation::current(), raised, {server.state, withoutQuoted(server.text)}, false}))
{
}

RuntimeError::RuntimeError(ErrorNumber number, const QString &description, std::shared_ptr<Origin> origin)
    : std::runtime_error(description.toStdString())
    , number_(number)
    , description_(description)
    , origin_(std::move(origin))
{
}

RuntimeError RuntimeError::toldAs(ErrorNumber number, const QString &description) const
{
    return {number, description, origin_};
}

} // namespace runtime
