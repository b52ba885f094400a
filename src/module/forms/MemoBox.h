#pragma once

#include "forms/MoneyBox.h"

#include <QPlainTextEdit>

/// A text box of several lines with a vertical scroll bar. Tab leaves it.
class MemoBox : public QPlainTextEdit
{
    Q_OBJECT
public:
    /// Only the habits of the caret apply here.
    explicit MemoBox(const TextBoxHabits &habits = {}, QWidget *parent = nullptr);

    /// As it was set, unless the user changed it: then with line breaks of the kind that it came with.
    QString text() const;
    void setText(const QString &text);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void inputMethodEvent(QInputMethodEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    TextBoxHabits habits_;
    QString set_;   ///< by setText(), as it came
    QString shown_; ///< the same as the box shows it, which may differ in line breaks and blanks
    Composition composing_;
};
