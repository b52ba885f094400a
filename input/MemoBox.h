#pragma once

#include "input/MoneyBox.h"

#include <QPlainTextEdit>

/// A text box of several lines with a vertical scroll bar. Tab leaves it.
class MemoBox : public QPlainTextEdit
{
    Q_OBJECT
public:
    /// Only the habits of the caret apply here.
    explicit MemoBox(const TextBoxHabits &habits = {}, QWidget *parent = nullptr);

    QString text() const { return toPlainText(); }
    void setText(const QString &text) { setPlainText(text); }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void inputMethodEvent(QInputMethodEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    TextBoxHabits habits_;
    QString composing_; ///< see MoneyBox
};
