#include "money/DialogForm.h"

#include "platform/controls/Named.h"
#include "platform/runtime/Format.h"

using controls::named;

namespace dialogForm {

QLineEdit *amountBox(const QString &name, QWidget *parent)
{
    auto *box = named(new QLineEdit(parent), name);
    box->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return box;
}

QLineEdit *readOnlyBox(const QString &name, Holds holds, QWidget *parent)
{
    QLineEdit *box = holds == Holds::Money ? amountBox(name, parent) : named(new QLineEdit(parent), name);
    box->setReadOnly(true);
    box->setFrame(false);
    box->setFocusPolicy(Qt::ClickFocus); // Tab goes where something can be typed
    return box;
}

int amountWidth(const QWidget &box)
{
    return box.fontMetrics().horizontalAdvance(QStringLiteral("-9,999,999,999"));
}

void makeStrong(QPushButton *button)
{
    QFont strong = button->font();
    strong.setBold(true);
    button->setFont(strong);
}

QHBoxLayout *layOutSaveAndCancel(QPushButton *&cmdConfirm, QPushButton *&cmdCancel, QWidget *parent)
{
    cmdConfirm = named(new QPushButton(QStringLiteral("저장(F12)"), parent), QStringLiteral("cmdConfirm"));
    cmdCancel = named(new QPushButton(QStringLiteral("취소(F9)"), parent), QStringLiteral("cmdCancel"));
    makeStrong(cmdConfirm);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    for (QPushButton *button : {cmdConfirm, cmdCancel}) {
        button->setMinimumSize(110, 32);
        buttons->addWidget(button);
    }
    return buttons;
}

QString groupedWon(qint32 money)
{
    return runtime::Format(money, QStringLiteral("##,##0"));
}

} // namespace dialogForm
