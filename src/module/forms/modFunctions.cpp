#include "forms/modFunctions.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>

void selectAllText(QWidget *control)
{
    if (auto *combo = qobject_cast<QComboBox *>(control))
        control = combo->lineEdit();
    if (auto *line = qobject_cast<QLineEdit *>(control))
        line->selectAll();
    else if (auto *memo = qobject_cast<QPlainTextEdit *>(control))
        memo->selectAll();
}

void caretToEnd(QWidget *control)
{
    if (auto *line = qobject_cast<QLineEdit *>(control))
        line->end(false);
    else if (auto *memo = qobject_cast<QPlainTextEdit *>(control))
        memo->moveCursor(QTextCursor::End);
}
