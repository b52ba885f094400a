#include "input/FormRow.h"

#include "platform/controls/Named.h"

#include <QLabel>
#include <QPlainTextEdit>

void addFormRow(QGridLayout *form, int row, int column, const QString &caption, QWidget *control, int columnSpan)
{
    auto *label = new QLabel(caption);
    label->setBuddy(control);
    const bool severalLines = qobject_cast<QPlainTextEdit *>(control);
    label->setAlignment(Qt::AlignRight | (severalLines ? Qt::AlignTop : Qt::AlignVCenter));
    if (severalLines)
        label->setContentsMargins(0, 4, 0, 0);
    control->setAccessibleName(caption);
    form->addWidget(label, row, column);
    form->addWidget(control, row, column + 1, 1, columnSpan);
}

QList<controls::PushCheck *> makePushChecks(const QString &name, const QStringList &captions, QWidget *parent)
{
    QList<controls::PushCheck *> buttons;
    for (const QString &caption : captions) {
        auto *button = new controls::PushCheck(caption, parent);
        controls::named(button, name, int(buttons.size()));
        button->setAccessibleName(caption);
        buttons += button;
    }
    return buttons;
}

QHBoxLayout *layOutStrip(QWidget *strip, const QList<controls::PushCheck *> &commands,
                         const QList<controls::PushCheck *> &saveButtons)
{
    auto *row = new QHBoxLayout(strip);
    row->setContentsMargins(0, 2, 0, 2);
    for (controls::PushCheck *button : commands.first(commands.size() - 1))
        row->addWidget(button);
    for (controls::PushCheck *button : saveButtons)
        row->addWidget(button);
    row->addStretch();
    row->addWidget(commands.last());
    return row;
}
