#pragma once

#include "platform/runtime/Log.h"
#include "platform/runtime/RuntimeError.h"

#include <QString>

#include <utility>

namespace runtime {

/// "Errors set a flag and execution resumes at the next step": each call runs one step, a RuntimeError only marks the
/// attempt as failed, and goes to the log. Programming errors of other types pass through.
class Attempt
{
public:
    enum class Failure {
        IsTrouble,
        IsAnswer, ///< as that of a text which is no number: not for the log
    };

    explicit Attempt(Failure failure = Failure::IsTrouble)
        : failure_(failure)
    {
    }

    template <typename Step>
    void operator()(Step &&step, Place place = Place::here())
    {
        try {
            std::forward<Step>(step)();
        } catch (const RuntimeError &error) {
            if (failure_ == Failure::IsTrouble)
                trapped(place);
            if (!failed_)
                description_ = error.description();
            failed_ = true;
        }
    }

    bool failed() const { return failed_; }
    /// Description of the first failure.
    const QString &description() const { return description_; }

private:
    Failure failure_;
    bool failed_ = false;
    QString description_;
};

} // namespace runtime
