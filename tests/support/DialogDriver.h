#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>

/// Finds the controls of a dialog by their names, as a user finds them by their captions.
class DialogDriver
{
public:
    explicit DialogDriver(QWidget *dialog)
        : dialog_(dialog)
    {
    }

    template <typename Control>
    Control *find(const char *name) const
    {
        auto *control = dialog_->findChild<Control *>(QString::fromLatin1(name));
        EXPECT_TRUE(control) << name;
        return control;
    }
    std::string text(const char *name) const
    {
        if (auto *label = dialog_->findChild<QLabel *>(QString::fromLatin1(name)))
            return label->text().toStdString();
        return find<QLineEdit>(name)->text().toStdString();
    }
    void type(const char *name, const char *text) const { find<QLineEdit>(name)->setText(QString::fromLatin1(text)); }
    void press(const char *name) const { find<QAbstractButton>(name)->click(); }
    bool checked(const char *name) const { return find<QAbstractButton>(name)->isChecked(); }
    /// A key as the keyboard sends it, to whatever the user stands on.
    void key(Qt::Key code, Qt::KeyboardModifiers modifiers = {}) const
    {
        QTest::keyClick(dialog_->windowHandle(), code, modifiers);
    }
    struct KeyMove
    {
        const char *from;
        Qt::Key code;
        Qt::KeyboardModifiers modifiers;
        const char *to;
    };
    void expectMoves(std::initializer_list<KeyMove> moves) const
    {
        for (const KeyMove &move : moves) {
            find<QWidget>(move.from)->setFocus(Qt::TabFocusReason);
            key(move.code, move.modifiers);
            EXPECT_EQ(focus(), move.to) << "from " << move.from;
        }
    }
    std::string focus() const
    {
        return dialog_->focusWidget() ? dialog_->focusWidget()->objectName().toStdString() : "";
    }
    QWidget *window() const { return dialog_; }

private:
    QWidget *dialog_;
};

/// Runs `open` and acts in the modal dialog that it brings up over the window of now, which is closed then if it still
/// stands. Whether one came up.
inline bool inDialog(const std::function<void()> &open, const std::function<void(const DialogDriver &)> &act)
{
    const QWidget *behind = QApplication::activeModalWidget();
    bool came = false;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
        QWidget *dialog = QApplication::activeModalWidget();
        if (came || !dialog || dialog == behind)
            return;
        came = true;
        // Focus events come only to an active window; one over an active window counts as active before it is in front.
        EXPECT_TRUE(QTest::qWaitForWindowActive(dialog));
        EXPECT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == dialog; }));
        act(DialogDriver(dialog));
        if (QApplication::activeModalWidget() == dialog)
            dialog->close();
    });
    watch.start(5);
    open();
    return came;
}
