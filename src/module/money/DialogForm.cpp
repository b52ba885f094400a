#include "money/DialogForm.h"

#include "forms/FormRow.h"
#include "platform/controls/DateEdit.h"
#include "platform/controls/MessageBox.h"
#include "platform/controls/Named.h"
#include "platform/controls/Spoken.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Format.h"
#include "settings/clsProperties.h"

using controls::named;

namespace dialogForm {

namespace {

const QString noDiscounts = QStringLiteral("수납시할인사용안함");

} // namespace

QLineEdit *amountBox(const QString &name, QWidget *parent)
{
    auto *box = named(new QLineEdit(parent), name);
    box->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    controls::speakMoney(box, controls::Amounts::Bare);
    return box;
}

QLineEdit *readOnlyBox(const QString &name, Holds holds, QWidget *parent)
{
    QLineEdit *box = makeShownBox(name, parent);
    if (holds != Holds::Text)
        box->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    if (holds == Holds::Money)
        controls::speakMoney(box, controls::Amounts::Bare);
    return box;
}

int amountWidth(const QWidget &box)
{
    return box.fontMetrics().horizontalAdvance(QStringLiteral("-9,999,999,999"));
}

QGridLayout *layOutHead(ReceiptHead &head, const QString &prefix, const QString &date, QWidget *parent)
{
    head.txtName = readOnlyBox(QStringLiteral("txtName"), Holds::Text, parent);
    head.txtChartnum = readOnlyBox(QStringLiteral("txtChartnum"), Holds::Text, parent);
    head.dtpTodat = named(new controls::DateEdit(parent), QStringLiteral("dtpTodat"));
    head.txtDate = readOnlyBox(prefix + date, Holds::Text, parent);
    head.txtBonin = readOnlyBox(prefix + QStringLiteral("Bonin"), Holds::Money, parent);
    head.txtCheonggu = readOnlyBox(prefix + QStringLiteral("Cheonggu"), Holds::Money, parent);
    head.txtGeneral = readOnlyBox(prefix + QStringLiteral("General"), Holds::Money, parent);

    auto *grid = new QGridLayout;
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(3);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    addFormRow(grid, 0, 0, QStringLiteral("이름"), head.txtName);
    addFormRow(grid, 0, 2, QStringLiteral("챠트번호"), head.txtChartnum);
    addFormRow(grid, 1, 0, QStringLiteral("수납날짜"), head.dtpTodat);
    addFormRow(grid, 1, 2, QStringLiteral("거래일자"), head.txtDate);
    addFormRow(grid, 2, 0, QStringLiteral("판매금액"), head.txtBonin);
    addFormRow(grid, 2, 2, QStringLiteral("청구금액"), head.txtCheonggu);
    addFormRow(grid, 3, 0, QStringLiteral("일반진료금액"), head.txtGeneral);
    return grid;
}

QHBoxLayout *layOutOperators(OperatorOptions &optOperator, QWidget *parent)
{
    auto *options = new QHBoxLayout;
    options->setSpacing(16);
    for (std::size_t index = 0; index < optOperator.size(); ++index) {
        auto *button = new QRadioButton(ledger::operatorText(ledger::operators[index]), parent);
        options->addWidget(named(button, QStringLiteral("optOperator"), int(index)));
        optOperator[index] = button;
    }
    options->addStretch(1);
    return options;
}

QRadioButton *optionOf(const OperatorOptions &optOperator, ledger::Operator code)
{
    return optOperator[std::size_t(code - ledger::operators.front())];
}

ledger::Operator chosenOperator(const OperatorOptions &optOperator)
{
    for (const ledger::Operator code : ledger::operators) {
        if (optionOf(optOperator, code)->isChecked())
            return code;
    }
    return ledger::NoOperator;
}

bool applyDiscountSwitch(const OperatorOptions &optOperator)
{
    const bool discounts = clsProperties().PropValue(noDiscounts) != QLatin1String("1");
    if (!discounts)
        optionOf(optOperator, ledger::Payment)->setChecked(true);
    optionOf(optOperator, ledger::Discount)->setEnabled(discounts);
    return discounts;
}

void tellDiscountSwitch(ado::Foresight &next)
{
    clsProperties::tell(next, noDiscounts);
}

void addMethod(QComboBox *list, const ledger::Method &method)
{
    list->addItem(QString::fromUtf16(method.dialogText), QString(method.stored));
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

bool isAmount(const QLineEdit *box, const QString &title, QWidget *dialog)
{
    const bool amount = runtime::IsNumeric(box->text());
    if (!amount)
        controls::MsgBox(QStringLiteral("수납 금액을 수값으로 입력하십시오."), controls::InformationIcon, title,
                         dialog);
    return amount;
}

QString groupedWon(qint32 money)
{
    return runtime::Format(money, QStringLiteral("##,##0"));
}

} // namespace dialogForm
