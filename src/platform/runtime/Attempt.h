#pragma once

#include "platform/runtime/RuntimeError.h"

#include <QString>

#include <utility>

namespace runtime {

/// "Errors set a flag and execution resumes at the next step": each call runs one step, a RuntimeError only marks the
/// attempt as failed. Programming errors of other types pass through.
class Attempt
{
public:
    template <typename Step>
    void operator()(Step &&step)
    {
        try {
            std::forward<Step>(step)();
        } catch (const RuntimeError &error) {
            if (!failed_)
                description_ = error.description();
            failed_ = true;
        }
    }

    bool failed() const { return failed_; }
    /// Description of the first failure.
    const QString &description() const { return description_; }

private:
    bool failed_ = false;
    QString description_;
};

} // namespace runtime
