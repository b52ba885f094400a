#pragma once

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>

/// What the forms of the money dialogs have in common.
namespace dialogForm {

enum class Holds { Text, Money };

/// A box that only shows something; money stands at its right. Tab passes it over.
QLineEdit *readOnlyBox(const QString &name, Holds holds, QWidget *parent);
/// A box for an amount.
QLineEdit *amountBox(const QString &name, QWidget *parent);
/// Room for any amount of 32 bits, in pixels.
int amountWidth(const QWidget &box);
/// "저장(F12)" and "취소(F9)" in the lower right corner, under the names cmdConfirm and cmdCancel.
QHBoxLayout *layOutSaveAndCancel(QPushButton *&cmdConfirm, QPushButton *&cmdCancel, QWidget *parent);
/// The button that goes on is told from the rest at a glance.
void makeStrong(QPushButton *button);

/// Whole won as these dialogs show it, "1,234,567".
QString groupedWon(qint32 money);

} // namespace dialogForm
