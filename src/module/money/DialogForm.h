#pragma once

#include "data/Codes.h"

#include <QComboBox>
#include <QDateEdit>
#include <QGridLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include <array>

namespace ado {
class Foresight;
}

/// What the forms of the money dialogs have in common.
namespace dialogForm {

enum class Holds { Text, Number, Money };

/// A box that only shows something; numbers stand at its right. Tab passes it over.
QLineEdit *readOnlyBox(const QString &name, Holds holds, QWidget *parent);
/// A box for an amount.
QLineEdit *amountBox(const QString &name, QWidget *parent);
/// Width of any 32-bit amount, in pixels.
int amountWidth(const QWidget &box);

/// The head of a receipt: whose it is, the two dates, and the shares of the amount as they were laid out for treatments.
struct ReceiptHead
{
    QLineEdit *txtName = nullptr;
    QLineEdit *txtChartnum = nullptr;
    QDateEdit *dtpTodat = nullptr; ///< of the payment; all else is only shown
    QLineEdit *txtDate = nullptr;  ///< of the order
    QLineEdit *txtBonin = nullptr;
    QLineEdit *txtCheonggu = nullptr;
    QLineEdit *txtGeneral = nullptr;
};
/// Makes the head and lays it out in four columns; the right half of its fourth line is free. The boxes of the last four
/// are named with `prefix`, the first of these goes on with `date`.
QGridLayout *layOutHead(ReceiptHead &head, const QString &prefix, const QString &date, QWidget *parent);

/// One option for each of ledger::operators, in that order.
using OperatorOptions = std::array<QRadioButton *, ledger::operators.size()>;
/// Makes optOperator, none of them on.
QHBoxLayout *layOutOperators(OperatorOptions &optOperator, QWidget *parent);
QRadioButton *optionOf(const OperatorOptions &optOperator, ledger::Operator code);
/// The one whose option is on, if one is.
ledger::Operator chosenOperator(const OperatorOptions &optOperator);
/// Where the shop gives no discounts, their option is out of reach and the payment's is on. Returns whether it gives them.
bool applyDiscountSwitch(const OperatorOptions &optOperator);
/// What that reads.
void tellDiscountSwitch(ado::Foresight &next);

void addMethod(QComboBox *list, const ledger::Method &method);

/// "저장(F12)" and "취소(F9)" in the lower right corner, under the names cmdConfirm and cmdCancel.
QHBoxLayout *layOutSaveAndCancel(QPushButton *&cmdConfirm, QPushButton *&cmdCancel, QWidget *parent);
/// The button that goes on is told from the rest at a glance.
void makeStrong(QPushButton *button);

/// Whether a number was typed; if not, the user is told.
bool isAmount(const QLineEdit *box, const QString &title, QWidget *dialog);

/// Whole won as these dialogs show it, "1,234,567".
QString groupedWon(qint32 money);

} // namespace dialogForm
