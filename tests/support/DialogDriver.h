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

/// Acts on the next modal dialog once it stands over the window of now, then closes it if it still does.
inline void whenDialogStands(const std::function<void(const DialogDriver &)> &act)
{
    auto *watch = new QTimer(qApp);
    watch->start(5);
    const QWidget *before = QApplication::activeModalWidget();
    QObject::connect(watch, &QTimer::timeout, watch, [watch, before, act, looks = 0]() mutable {
        QWidget *dialog = QApplication::activeModalWidget();
        const bool stands = dialog && dialog != before;
        if (!stands && ++looks < 400)
            return;
        watch->stop();
        watch->deleteLater();
        ASSERT_TRUE(stands) << "no dialog came up";
        EXPECT_TRUE(QTest::qWaitForWindowActive(dialog)); // focus events come only to an active window
        act(DialogDriver(dialog));
        if (QApplication::activeModalWidget() == dialog)
            dialog->close();
    });
}
