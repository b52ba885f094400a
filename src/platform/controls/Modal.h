#pragma once

#include <QDialog>
#include <QPointer>

#include <optional>
#include <utility>

namespace controls {

/// A dialog or box under its owner for the time of one use. The owner may go while it stands and takes it along; then this
/// is empty, and so may be whoever opened it.
template <typename Dialog>
class Modal
{
public:
    template <typename... Arguments>
    explicit Modal(Arguments &&...arguments)
        : dialog_(new Dialog(std::forward<Arguments>(arguments)...))
    {
    }
    ~Modal() { delete dialog_.data(); }
    Modal(const Modal &) = delete;
    Modal &operator=(const Modal &) = delete;

    Dialog *get() const { return dialog_.data(); }
    Dialog *operator->() const { return dialog_.data(); }
    explicit operator bool() const { return !dialog_.isNull(); }

private:
    QPointer<Dialog> dialog_;
};

/// Shows the dialog and waits for its end; its result. Nothing when it went meanwhile: nobody may touch it, or what it lay
/// in, any more. Nothing at once when it is gone already.
inline std::optional<int> runModal(QDialog *dialog)
{
    if (!dialog)
        return std::nullopt;
    const QPointer<QDialog> alive(dialog);
    const int result = dialog->exec();
    return alive ? std::optional(result) : std::nullopt;
}

} // namespace controls
