#pragma once

#include "forms/Composition.h"

#include <QLineEdit>

/// What a text box does when the focus comes: nothing, by keyboard too; or one of the two.
enum class OnFocus { Nothing, SelectAll, CaretToEnd };

/// Which habits of the money boxes a text box has; the members of the family differ in them.
struct TextBoxHabits
{
    bool filtersKeys = false;        ///< digits and Backspace pass, "-" over the whole value or on zero; others beep
    bool reformats = false;          ///< after every key: the money format, red when negative
    bool caretToEndOnChange = false; ///< the caret stands behind the text after every change, by code too
    OnFocus onFocus = OnFocus::Nothing;
};

/// The habits of a full money box.
inline constexpr TextBoxHabits MoneyHabits{true, true, true, OnFocus::SelectAll};

/// A text box with the habits of the money boxes. A money box always shows its value in the money format; the value is
/// read back with clsNumberRelated::GetPureNumber.
class MoneyBox : public QLineEdit
{
    Q_OBJECT
public:
    /// Right-aligned when it filters keys or reformats.
    explicit MoneyBox(const TextBoxHabits &habits = MoneyHabits, QWidget *parent = nullptr);

    const TextBoxHabits &habits() const { return habits_; }

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void inputMethodEvent(QInputMethodEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    bool takes(QChar character) const;
    void reformat();

    TextBoxHabits habits_;
    Composition composing_;
    bool focusCameByMouse_ = false;
};

/// A sum of money to be read from a step away: bold and larger, at the right. It has room for the sums of a day; a longer one
/// is drawn smaller.
void showLargeMoney(QLineEdit *box);
/// Width of the box in which this text shows whole.
int boxWidth(const QLineEdit *box, const QString &text);
/// A sum as long as sums get.
inline const QString longMoney = QStringLiteral("\\9,999,999,999");

/// Money that is owed stands in a red of its own.
void showOwed(QLineEdit *box, bool owed);

/// Shows a number text in the money format, red when it is negative.
void showMoney(QLineEdit *box, const QString &pureNumber);
