#include "forms/FormRow.h"

#include "forms/clsMyFunctions.h"
#include "platform/controls/Appearance.h"
#include "platform/controls/Named.h"
#include "platform/controls/Spoken.h"

#include <QLabel>
#include <QMap>
#include <QSplitter>
#include <QVBoxLayout>

#include <algorithm>

namespace {

// Panels one above the other are equally wide, so that their edges line up.
constexpr int panelCharacters = 26;

} // namespace

void addFormRow(QGridLayout *form, int row, int column, const QString &caption, QWidget *control, int columnSpan)
{
    auto *label = new QLabel(caption);
    label->setBuddy(control);
    const bool severalLines = control->sizePolicy().expandingDirections().testFlag(Qt::Vertical);
    label->setAlignment(Qt::AlignRight | (severalLines ? Qt::AlignTop : Qt::AlignVCenter));
    if (severalLines)
        label->setContentsMargins(0, 4, 0, 0);
    control->setAccessibleName(controls::spokenName(caption));
    if (!severalLines)
        control->setMinimumHeight(std::max(control->minimumHeight(), formRowHeight(control)));
    form->addWidget(label, row, column);
    form->addWidget(control, row, column + 1, 1, columnSpan);
}

int formRowHeight(const QWidget *form)
{
    static QFont font;
    static int height = 0;
    if (height == 0 || font != form->font()) {
        QLineEdit framed;
        framed.setFont(form->font());
        font = form->font();
        height = framed.sizeHint().height();
    }
    return height;
}

void alignCaptions(const QList<QWidget *> &forms)
{
    QMap<int, int> widths; // of the caption columns
    QList<QGridLayout *> grids;
    for (QWidget *form : forms)
        grids += form->findChild<QGridLayout *>();
    const auto eachCaption = [&](auto work) {
        for (QGridLayout *grid : grids) {
            for (int index = 0; index < grid->count(); ++index) {
                int row = 0, column = 0, rows = 0, columns = 0;
                grid->getItemPosition(index, &row, &column, &rows, &columns);
                auto *caption = qobject_cast<QLabel *>(grid->itemAt(index)->widget());
                if (caption && columns == 1)
                    work(grid, column, caption->sizeHint().width());
            }
        }
    };
    eachCaption([&](QGridLayout *, int column, int width) { widths[column] = std::max(widths[column], width); });
    eachCaption([&](QGridLayout *grid, int column, int) { grid->setColumnMinimumWidth(column, widths[column]); });
}

void keepPlaceWhenHidden(QWidget *control)
{
    QSizePolicy policy = control->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    control->setSizePolicy(policy);
}

void letShrink(const QList<QPushButton *> &buttons)
{
    for (QPushButton *button : buttons)
        button->setMinimumWidth(button->fontMetrics().horizontalAdvance(button->text()) + 18);
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
    for (controls::PushCheck *button : saveButtons) {
        row->addWidget(button);
        button->hide();
    }
    row->addStretch();
    row->addWidget(commands.last());
    return row;
}

QList<controls::PushCheck *> makeSaveButtons(const QString &name, QWidget *form)
{
    const QList<controls::PushCheck *> buttons =
        makePushChecks(name, {QStringLiteral("저장"), QStringLiteral("취소")}, form);
    for (controls::PushCheck *button : buttons) {
        keepPlaceWhenHidden(button);
        button->hide();
    }
    return buttons;
}

QGridLayout *makeFormGrid(QWidget *form)
{
    auto *grid = new QGridLayout(form);
    grid->setContentsMargins(6, 4, 6, 4);
    grid->setHorizontalSpacing(5);
    grid->setVerticalSpacing(2);
    grid->setColumnStretch(1, 1);
    return grid;
}

QLineEdit *makeShownBox(const QString &name, QWidget *parent)
{
    auto *box = controls::named(new QLineEdit(parent), name);
    clsMyFunctions::keepReadOnly(box);
    controls::setGround(box, controls::Ground::Locked);
    controls::speakMoney(box);
    box->setFocusPolicy(Qt::ClickFocus);
    return box;
}

QGroupBox *makePanelFrame(const QString &name, int index, const QString &title, QWidget *parent)
{
    auto *frame = new QGroupBox(title, parent);
    controls::named(frame, name, index);
    return frame;
}

void setTabChain(const QList<QWidget *> &controls)
{
    for (qsizetype index = 1; index < controls.size(); ++index)
        QWidget::setTabOrder(controls[index - 1], controls[index]);
}

void layOutListAndPanel(QWidget *pane, QWidget *list, QWidget *panel)
{
    panel->setMinimumWidth(panelCharacters * pane->fontMetrics().averageCharWidth());
    auto *split = new QSplitter(Qt::Horizontal);
    split->setChildrenCollapsible(false);
    split->addWidget(list);
    split->addWidget(panel);
    split->setStretchFactor(0, 1);
    auto *layout = new QVBoxLayout(pane);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(split);
}
