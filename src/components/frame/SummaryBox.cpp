#include "components/frame/SummaryBox.h"

#include "platform/controls/Appearance.h"
#include "platform/controls/Named.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>

namespace statistics {

namespace {

void addSummaryLine(QGridLayout *form, int row, const SummaryLine &line, int number)
{
    auto *caption = new QLabel(line.caption);
    auto *amount =
        controls::named(new QLabel(shownText(line.amount) + line.unit), QStringLiteral("lblSummary"), number);
    amount->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    amount->setTextInteractionFlags(Qt::TextSelectableByMouse);
    const QString unit = line.unit.isEmpty() ? QStringLiteral("원") : line.unit;
    amount->setAccessibleName(line.caption + u' ' + shownText(line.amount) + unit);
    if (inkOf(line.amount) == controls::Ink::Negative)
        controls::setInk(amount, controls::Ink::Negative);
    if (line.isResult) {
        QFont bold = amount->font();
        bold.setBold(true);
        caption->setFont(bold);
        amount->setFont(bold);
    }
    form->addWidget(caption, row, 0);
    form->addWidget(amount, row, 1);
}

} // namespace

SummaryBox::SummaryBox(QWidget *parent)
    : QWidget(parent)
{
    controls::named(this, QStringLiteral("fraSummary"));
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    hide();
}

void SummaryBox::setLines(const std::vector<SummaryLine> &lines)
{
    const QList<QGroupBox *> old = findChildren<QGroupBox *>(QString(), Qt::FindDirectChildrenOnly);
    qDeleteAll(old);
    QGroupBox *group = nullptr;
    QGridLayout *form = nullptr;
    int row = 0;
    int number = 0;
    for (const SummaryLine &line : lines) {
        if (!group || group->title() != line.group) {
            if (form)
                form->setRowStretch(row, 1);
            group = new QGroupBox(line.group);
            form = new QGridLayout(group);
            form->setContentsMargins(10, 4, 10, 6);
            form->setVerticalSpacing(2);
            form->setColumnStretch(1, 1);
            row = 0;
            layout()->addWidget(group);
        }
        addSummaryLine(form, row++, line, number++);
    }
    if (form)
        form->setRowStretch(row, 1);
    setVisible(!lines.empty());
}

} // namespace statistics
