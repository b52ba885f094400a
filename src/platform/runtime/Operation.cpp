#include "platform/runtime/Operation.h"

#include <utility>

namespace runtime {

namespace {

thread_local Operation *innermost = nullptr;

} // namespace

Operation::Operation(const char *name, std::initializer_list<Key> keys)
    : words_(name)
    , outer_(std::exchange(innermost, this))
{
    for (const Key &key : keys)
        words_ += QByteArray(" ") + key.name + '=' + QByteArray::number(key.number);
}

Operation::Operation(const QString &objectName)
    : Operation(objectName.isEmpty() ? "event" : objectName.toLatin1().constData())
{
}

Operation::~Operation()
{
    innermost = outer_;
}

QByteArray Operation::current()
{
    QByteArray all;
    for (const Operation *operation = innermost; operation; operation = operation->outer_)
        all = all.isEmpty() ? operation->words_ : operation->words_ + " > " + all;
    return all;
}

} // namespace runtime
