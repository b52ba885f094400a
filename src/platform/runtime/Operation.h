#pragma once

#include <QByteArray>
#include <QString>

#include <initializer_list>

namespace runtime {

/// What is being done, as long as a scope: an event at its edge, a flow inside it. An error carries the operations it came
/// out of into the log. Names are the program's own words and keys are numbers, so that nothing of a patient gets there.
class Operation
{
public:
    struct Key
    {
        const char *name;
        qint64 number;
    };

    explicit Operation(const char *name, std::initializer_list<Key> keys = {});
    /// Named after a control.
    explicit Operation(const QString &objectName);
    ~Operation();
    Operation(const Operation &) = delete;
    Operation &operator=(const Operation &) = delete;

    /// Those of this thread, the outermost first: "cmdSave > change line order=17 line=3".
    static QByteArray current();

private:
    QByteArray words_;
    Operation *outer_;
};

} // namespace runtime
