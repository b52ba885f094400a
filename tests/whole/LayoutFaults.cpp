#include "tests/whole/LayoutFaults.h"

#include "platform/controls/RecordsetGrid.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHash>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTreeView>

namespace {

bool isControl(const QWidget *widget)
{
    return qobject_cast<const QLabel *>(widget) || qobject_cast<const QAbstractButton *>(widget)
           || qobject_cast<const QLineEdit *>(widget) || qobject_cast<const QComboBox *>(widget)
           || qobject_cast<const QAbstractSpinBox *>(widget) || qobject_cast<const QPlainTextEdit *>(widget)
           || qobject_cast<const QAbstractItemView *>(widget) || qobject_cast<const QTabBar *>(widget);
}

/// Those that the user sees as one thing, without what they are made of.
void addControls(QWidget *parent, QList<QWidget *> &controls)
{
    for (QObject *child : parent->children()) {
        auto *widget = qobject_cast<QWidget *>(child);
        if (!widget || !widget->isVisible() || widget->isWindow())
            continue;
        if (isControl(widget))
            controls += widget;
        else
            addControls(widget, controls);
    }
}

QRect placeOf(const QWidget *control)
{
    return {control->mapTo(control->window(), QPoint()), control->size()};
}

QString nameOf(const QWidget *control)
{
    if (!control->objectName().isEmpty())
        return control->objectName();
    if (auto *label = qobject_cast<const QLabel *>(control))
        return QStringLiteral("'%1'").arg(label->text());
    return QString::fromLatin1(control->metaObject()->className());
}

/// Pixels that a control lacks to show its text; a box of several lines and one with its text in the tooltip lack none.
int lacking(const QWidget *control)
{
    const auto width = [&](const QString &text) { return control->fontMetrics().horizontalAdvance(text); };
    constexpr int innerMargin = 2; // of a stock text box, on each side
    if (auto *label = qobject_cast<const QLabel *>(control))
        return label->sizePolicy().horizontalPolicy() == QSizePolicy::Ignored
                   ? 0
                   : label->sizeHint().width() - label->width();
    if (auto *button = qobject_cast<const QPushButton *>(control))
        return width(button->text()) + 2 * innerMargin - button->width();
    if (auto *mark = qobject_cast<const QAbstractButton *>(control))
        return mark->text().isEmpty() ? 0 : mark->sizeHint().width() - mark->width();
    if (auto *list = qobject_cast<const QComboBox *>(control))
        return list->isEditable() ? 0 : list->minimumSizeHint().width() - list->width();
    if (auto *box = qobject_cast<const QAbstractSpinBox *>(control))
        return width(box->text()) + 2 * innerMargin - box->findChild<QLineEdit *>()->width();
    auto *box = qobject_cast<const QLineEdit *>(control);
    const bool told = box && box->toolTip() == box->text().toHtmlEscaped();
    const bool typed = box && !box->isReadOnly() && !(box->alignment() & Qt::AlignRight);
    return box && !told && !typed ? width(box->text()) + 2 * innerMargin - box->width() : 0;
}

QStringList cutCells(const QTableView *grid)
{
    QStringList faults;
    const auto *bound = qobject_cast<const controls::RecordsetGrid *>(grid);
    const QHeaderView *head = grid->horizontalHeader();
    for (int column = 0; column < head->count(); ++column) {
        if (head->isSectionHidden(column))
            continue;
        const QString caption = grid->model()->headerData(column, Qt::Horizontal).toString();
        if (head->fontMetrics().horizontalAdvance(caption) > head->sectionSize(column))
            faults << QStringLiteral("the head '%1' of %2 is cut").arg(caption, nameOf(grid));
        if (!bound || bound->columns()[std::size_t(column)].kind != controls::GridColumn::Kind::Money)
            continue;
        for (int row = grid->rowAt(0); row >= 0 && row <= grid->rowAt(grid->viewport()->height() - 1); ++row) {
            QStyleOptionViewItem option;
            option.initFrom(grid);
            option.widget = grid;
            option.rect = {0, 0, head->sectionSize(column), grid->rowHeight(row)};
            const QModelIndex cell = grid->model()->index(row, column);
            if (grid->itemDelegate()->sizeHint(option, cell).width() > head->sectionSize(column))
                faults << QStringLiteral("'%1' in %2 is cut").arg(cell.data().toString(), nameOf(grid));
        }
    }
    return faults;
}

QStringList cutTexts(const QList<QWidget *> &controls)
{
    QStringList faults;
    for (const QWidget *control : controls) {
        if (const int pixels = lacking(control); pixels > 0)
            faults << QStringLiteral("%1 lacks %2 pixels for its text").arg(nameOf(control)).arg(pixels);
        if (auto *tabs = qobject_cast<const QTabBar *>(control); tabs && tabs->sizeHint().width() > tabs->width())
            faults << QStringLiteral("tabs are cut");
        if (auto *grid = qobject_cast<const QTableView *>(control))
            faults << cutCells(grid);
    }
    return faults;
}

QStringList misplaced(const QList<QWidget *> &controls)
{
    QStringList faults;
    for (qsizetype one = 0; one < controls.size(); ++one) {
        const QWidget *control = controls[one];
        const QRect place = placeOf(control);
        for (const QWidget *holder = control->parentWidget(); holder; holder = holder->parentWidget()) {
            const QRect within(holder->mapTo(control->window(), QPoint()), holder->size());
            if (!within.contains(place))
                faults << QStringLiteral("%1 lies outside of %2").arg(nameOf(control), nameOf(holder));
            if (holder->isWindow())
                break;
        }
        for (qsizetype other = one + 1; other < controls.size(); ++other) {
            if (place.intersects(placeOf(controls[other])))
                faults << QStringLiteral("%1 lies over %2").arg(nameOf(control), nameOf(controls[other]));
        }
    }
    return faults;
}

/// Captions of a form's column end at the same place, also where forms stand one above the other on the sale tab; buttons
/// of a row stand on one line.
QStringList outOfLine(QWidget *window)
{
    QStringList faults;
    const auto expectSame = [&](QHash<int, int> &known, int group, int value, const QWidget *control) {
        if (!known.contains(group))
            known[group] = value;
        else if (known[group] != value)
            faults << QStringLiteral("%1 stands out of line").arg(nameOf(control));
    };
    QHash<int, int> besideLists; // caption column: where it ends
    for (QGridLayout *grid : window->findChildren<QGridLayout *>()) {
        QHash<int, int> ends;
        const QString form = grid->parentWidget() ? grid->parentWidget()->objectName() : QString();
        const bool besideList =
            form == u"c1elaCustSaleInfo" || form == u"c1elaSaleDetailMemo" || form == u"c1elaTransInfo";
        for (int index = 0; index < grid->count(); ++index) {
            int row = 0, column = 0, rows = 0, columns = 0;
            grid->getItemPosition(index, &row, &column, &rows, &columns);
            auto *caption = qobject_cast<QLabel *>(grid->itemAt(index)->widget());
            if (caption && caption->isVisible() && caption->buddy() && columns == 1)
                expectSame(besideList ? besideLists : ends, column, placeOf(caption).right(), caption);
        }
    }
    for (QHBoxLayout *row : window->findChildren<QHBoxLayout *>()) {
        QHash<int, int> lines;
        for (int index = 0; index < row->count(); ++index) {
            auto *button = qobject_cast<QPushButton *>(row->itemAt(index)->widget());
            if (button && button->isVisible())
                expectSame(lines, 0, placeOf(button).bottom(), button);
        }
    }
    return faults;
}

} // namespace

QStringList layoutFaults(QWidget *window)
{
    QList<QWidget *> controls;
    addControls(window, controls);
    return cutTexts(controls) + misplaced(controls) + outOfLine(window);
}

QHash<QString, QRect> placesOf(QWidget *window)
{
    QList<QWidget *> controls;
    addControls(window, controls);
    QHash<QString, QRect> places;
    for (const QWidget *control : controls)
        places.insert(nameOf(control), placeOf(control));
    return places;
}
