#pragma once

#include <QApplication>
#include <QKeyEvent>
#include <QVBoxLayout>
#include <QWidget>
#include <QWindow>

/// A window with controls one below the other and a hand on its keyboard. Keys go to the window, as from the desktop, so
/// that the release of Tab reaches the control that the focus went to.
class Typist
{
public:
    explicit Typist(const QList<QWidget *> &controls)
    {
        auto *layout = new QVBoxLayout(&window_);
        for (QWidget *control : controls)
            layout->addWidget(control);
        window_.show();
        window_.activateWindow();
        QApplication::setActiveWindow(&window_);
        QCoreApplication::processEvents();
        controls.first()->setFocus();
    }

    void press(int key, const QString &text = QString(), Qt::KeyboardModifiers state = {}, bool repeated = false)
    {
        send(QEvent::KeyPress, key, text, state, repeated);
    }
    void release(int key, const QString &text = QString(), Qt::KeyboardModifiers state = {}, bool repeated = false)
    {
        send(QEvent::KeyRelease, key, text, state, repeated);
    }
    void strike(int key, const QString &text = QString(), Qt::KeyboardModifiers state = {})
    {
        press(key, text, state);
        release(key, text, state);
    }
    /// Digits, letters and "-", each pressed and released; '<' is Backspace, '^' Home.
    void type(const QString &keys)
    {
        for (const QChar key : keys) {
            if (key == u'<')
                strike(Qt::Key_Backspace, QStringLiteral("\b"));
            else if (key == u'^')
                strike(Qt::Key_Home);
            else
                strike(key.toUpper().unicode(), QString(key));
        }
    }
    void tab() { strike(Qt::Key_Tab, QStringLiteral("\t")); }

private:
    void send(QEvent::Type type, int key, const QString &text, Qt::KeyboardModifiers state, bool repeated)
    {
        QKeyEvent event(type, key, state, text, repeated);
        QCoreApplication::sendEvent(window_.windowHandle(), &event);
    }

    QWidget window_;
};
