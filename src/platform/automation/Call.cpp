#include "platform/ado/Connection.h"
#include "platform/automation/Automation.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/ProgramThread.h"
#include "platform/runtime/RuntimeError.h"

#include <QMetaMethod>

#include <algorithm>
#include <vector>

namespace automation {

namespace {

using runtime::ErrorNumber;
using runtime::RuntimeError;

/// Type of a parameter as the caller holds it. One taken by reference is known by its name alone, ending in '&'.
QMetaType heldType(const QMetaMethod &method, int parameter)
{
    if (const QMetaType type = method.parameterMetaType(parameter); type.isValid())
        return type;
    static const bool namesKnown = [] {
        qRegisterMetaType<ado::ConnectionPtr>("ado::ConnectionPtr");
        qRegisterMetaType<runtime::Currency>("runtime::Currency");
        qRegisterMetaType<std::int32_t>("std::int32_t");
        return true;
    }();
    Q_UNUSED(namesKnown)
    QByteArray name = method.parameterTypeName(parameter);
    if (name.endsWith('&'))
        name.chop(1);
    return QMetaType::fromName(name);
}

/// The argument as the parameter's type holds it; false when it does not fit.
bool convert(QVariant &argument, QMetaType type)
{
    if (!type.isValid() || type == QMetaType::fromType<QVariant>())
        return type.isValid();
    if (!argument.isValid()) {
        argument = QVariant(type);
        return true;
    }
    if (argument.metaType() == type)
        return true;
    try {
        switch (type.id()) {
        case QMetaType::Bool:
            argument = runtime::isTrue(argument);
            return true;
        case QMetaType::Int:
            argument = runtime::CLng(argument);
            return true;
        case QMetaType::Short:
            argument = QVariant::fromValue<short>(runtime::CInt(argument));
            return true;
        case QMetaType::QString:
            argument = runtime::text(argument);
            return true;
        default:
            if (type == QMetaType::fromType<runtime::Currency>()) {
                argument = QVariant::fromValue(runtime::CCur(argument));
                return true;
            }
            return argument.convert(type);
        }
    } catch (const RuntimeError &) {
        return false;
    }
}

/// "2. lngCustPK: QString -> int": which argument does not fit, and how; empty when all do and are converted.
QString convertAll(QVariantList &arguments, const QMetaMethod &method)
{
    for (int i = 0; i < int(arguments.size()); ++i) {
        const QVariant given = arguments.at(i);
        if (!convert(arguments[i], heldType(method, i)))
            return QStringLiteral("%1. %2: %3 -> %4")
                .arg(i + 1)
                .arg(QLatin1String(method.parameterNames().at(i)), QLatin1String(given.typeName()),
                     QLatin1String(method.parameterTypes().at(i)));
    }
    return {};
}

/// The members of that name which the object's own classes declare; those of QObject itself are out of reach.
std::vector<QMetaMethod> membersNamed(const QMetaObject &metaObject, const QString &member)
{
    std::vector<QMetaMethod> found;
    for (int index = metaObject.methodCount() - 1; index >= QObject::staticMetaObject.methodCount(); --index) {
        const QMetaMethod method = metaObject.method(index);
        const bool callable = method.methodType() != QMetaMethod::Signal && method.access() == QMetaMethod::Public;
        if (callable && member.compare(QLatin1String(method.name()), Qt::CaseInsensitive) == 0)
            found.push_back(method);
    }
    return found;
}

QVariant invoke(QObject &object, const QMetaMethod &method, QVariantList &arguments)
{
    const QMetaType resultType = method.returnMetaType();
    const bool returnsVariant = resultType == QMetaType::fromType<QVariant>();
    QVariant result = resultType.id() == QMetaType::Void || returnsVariant ? QVariant() : QVariant(resultType);

    std::vector<void *> storage{returnsVariant ? &result : result.data()};
    for (int i = 0; i < int(arguments.size()); ++i) {
        const bool takesVariant = heldType(method, i) == QMetaType::fromType<QVariant>();
        storage.push_back(takesVariant ? static_cast<void *>(&arguments[i]) : arguments[i].data());
    }
    QMetaObject::metacall(&object, QMetaObject::InvokeMetaMethod, method.methodIndex(), storage.data());
    return result;
}

} // namespace

QVariant call(QObject &object, const QString &member, QVariantList &arguments)
{
    runtime::demandProgramThread();
    const std::vector<QMetaMethod> methods = membersNamed(*object.metaObject(), member);
    if (methods.empty())
        throw RuntimeError(ErrorNumber::NoSuchMember,
                           QStringLiteral("프로그램 오류입니다. 개발사로 문의하십시오. (없는 멤버: %1)").arg(member));

    QStringList misfits, counts;
    for (const QMetaMethod &method : methods) {
        counts.prepend(QString::number(method.parameterCount()));
        if (method.parameterCount() != arguments.size())
            continue;
        QVariantList converted = arguments;
        if (const QString misfit = convertAll(converted, method); !misfit.isEmpty()) {
            misfits << misfit;
            continue;
        }
        const QVariant result = invoke(object, method, converted);
        const QList<QByteArray> types = method.parameterTypes();
        for (qsizetype i = 0; i < arguments.size(); ++i) {
            if (types.at(i).endsWith('&'))
                arguments[i] = converted.at(i);
        }
        return result;
    }
    const QString why = misfits.isEmpty() ? QStringLiteral("%1 -> %2").arg(arguments.size()).arg(counts.join(u'/'))
                                          : misfits.join(QStringLiteral("; "));
    throw RuntimeError(
        ErrorNumber::WrongArguments,
        QStringLiteral("프로그램 오류입니다. 개발사로 문의하십시오. (맞지 않는 값: %1, %2)").arg(member, why));
}

QVariant call(QObject &object, const QString &member)
{
    QVariantList none;
    return call(object, member, none);
}

} // namespace automation
