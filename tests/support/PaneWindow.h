#pragma once

#include "forms/PaneContract.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTest>
#include <QWidget>

#include <initializer_list>
#include <stdexcept>
#include <string>
#include <utility>

/// A window that panes stand on, worked by the names of its controls.
class PaneWindow : public QWidget, public PaneShell
{
public:
    /// Raises std::runtime_error where there is no such control.
    template <typename Control = QWidget>
    Control &at(const char *name)
    {
        auto *control = findChild<Control *>(QString::fromLatin1(name));
        if (!control)
            throw std::runtime_error(std::string("no control ") + name);
        return *control;
    }
    std::string text(const char *name)
    {
        if (auto *memo = findChild<QPlainTextEdit *>(QString::fromLatin1(name)))
            return memo->toPlainText().toStdString();
        return at<QLineEdit>(name).text().toStdString();
    }
    /// Text boxes and options, "|" between them; an option shows its caption when it is chosen.
    std::string texts(std::initializer_list<const char *> names)
    {
        std::string all;
        const char *separator = "";
        for (const char *name : names) {
            all += std::exchange(separator, "|");
            auto *option = findChild<QAbstractButton *>(QString::fromLatin1(name));
            all += !option ? text(name) : option->isChecked() ? option->text().toStdString() : "-";
        }
        return all;
    }
    void push(const char *name) { QTest::mouseClick(&at<QAbstractButton>(name), Qt::LeftButton); }
    std::string focused() { return focusWidget() ? focusWidget()->objectName().toStdString() : ""; }
};
