#pragma once

#include <QList>
#include <QString>
#include <QVariant>

namespace ado {

/// A statement that the layer builds itself, piece by piece. Values travel beside the text where the engine's own
/// interface takes them, and as literals where it does not.
class Command
{
public:
    enum class Values {
        Marked,   ///< "?"
        Numbered, ///< "$1"
        Literal,
    };

    explicit Command(Values style)
        : style_(style)
    {
    }

    Command &operator<<(QStringView text);
    /// A value as parameter() makes it.
    Command &value(const QVariant &value);
    /// "= value", or "IS NULL".
    Command &equals(const QVariant &value);

    const QString &text() const { return text_; }
    const QList<QVariant> &values() const { return values_; }

private:
    Values style_;
    QString text_;
    QList<QVariant> values_;
};

} // namespace ado
