#pragma once

#include <QAccessibleWidget>
#include <QLineEdit>

namespace controls {

/// A text box that says "25,500원" where it shows the won sign and the digits. A place in the one is found in the other.
class MoneySpoken : public QAccessibleWidget, public QAccessibleTextInterface, public QAccessibleEditableTextInterface
{
public:
    explicit MoneySpoken(QLineEdit *box);

    void *interface_cast(QAccessible::InterfaceType type) override;
    QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text kind, const QString &text) override;
    QAccessible::State state() const override;

    using QAccessibleTextInterface::textAfterOffset;
    void selection(int selectionIndex, int *startOffset, int *endOffset) const override;
    int selectionCount() const override;
    void addSelection(int startOffset, int endOffset) override;
    void removeSelection(int selectionIndex) override;
    void setSelection(int selectionIndex, int startOffset, int endOffset) override;
    int cursorPosition() const override;
    void setCursorPosition(int position) override;
    QString text(int startOffset, int endOffset) const override;
    int characterCount() const override;
    QRect characterRect(int offset) const override;
    int offsetAtPoint(const QPoint &point) const override;
    void scrollToSubstring(int startIndex, int endIndex) override;
    QString attributes(int offset, int *startOffset, int *endOffset) const override;

    void deleteText(int startOffset, int endOffset) override;
    void insertText(int offset, const QString &text) override;
    void replaceText(int startOffset, int endOffset, const QString &text) override;

private:
    QLineEdit *box() const { return static_cast<QLineEdit *>(object()); }
    QString spoken() const;
    int shownPlace(int spokenPlace) const;
    int spokenPlace(int shownPlace) const;
    /// Place of the won sign that is not said; -1 without one.
    int signPlace() const;
};

} // namespace controls
