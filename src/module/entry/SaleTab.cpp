#include "entry/SaleTab.h"

#include "forms/FormRow.h"

#include <QFrame>
#include <QResizeEvent>
#include <QVBoxLayout>

#include <algorithm>

namespace {

QSplitter *makeSplitter(Qt::Orientation orientation)
{
    auto *splitter = new QSplitter(orientation);
    splitter->setChildrenCollapsible(false);
    splitter->setHandleWidth(5);
    return splitter;
}

QWidget *stack(std::initializer_list<QWidget *> widgets)
{
    auto *box = new QWidget;
    auto *layout = new QVBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    for (QWidget *widget : widgets) {
        if (widget)
            layout->addWidget(widget);
    }
    return box;
}

constexpr int linesForAll = 40; ///< of text; below that the strip of the customer folds

} // namespace

SaleTab::SaleTab(QWidget *customer, QWidget *productList, QWidget *entry, const std::array<Row, 3> &rows,
                 QWidget *parent)
    : QWidget(parent)
    , columns_(makeSplitter(Qt::Horizontal))
    , lists_(makeSplitter(Qt::Vertical))
    , forms_(makeSplitter(Qt::Vertical))
{
    columns_->setObjectName(QStringLiteral("c1elaMain"));

    QSplitter *products = makeSplitter(Qt::Vertical);
    products->addWidget(productList);
    products->addWidget(entry);
    products->setStretchFactor(0, 1);
    products->setStretchFactor(1, 0);

    for (const Row &row : rows) {
        QWidget *list = stack({row.strip, row.list});
        // Both sides of a row share the larger least height, so that dragging keeps them level.
        const int least = std::max(list->minimumSizeHint().height(), row.form->minimumSizeHint().height());
        list->setMinimumHeight(least);
        row.form->setMinimumHeight(least);
        lists_->addWidget(list);
        forms_->addWidget(row.form);
        lists_->setStretchFactor(lists_->count() - 1, row.stretch);
        forms_->setStretchFactor(forms_->count() - 1, row.stretch);
    }
    keepRowsInLine();

    columns_->addWidget(products);
    columns_->addWidget(lists_);
    columns_->addWidget(forms_);
    // The price of a product and the outstanding money of an order show without scrolling; the names of products take most of
    // what a wider window has more.
    columns_->setStretchFactor(0, 4);
    columns_->setStretchFactor(1, 1);
    columns_->setStretchFactor(2, 0);
    columns_->setSizes({445, 451, 366});
    // The strip above has its lines first.
    columns_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    alignCaptions({rows[0].form, rows[1].form, rows[2].form});

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 2, 4, 2);
    layout->setSpacing(2);
    layout->addWidget(customer);
    layout->addWidget(columns_, 1);
}

void SaleTab::keepRowsInLine()
{
    connect(lists_, &QSplitter::splitterMoved, forms_, [this] { forms_->setSizes(lists_->sizes()); });
    connect(forms_, &QSplitter::splitterMoved, lists_, [this] { lists_->setSizes(forms_->sizes()); });
}

void SaleTab::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    wasShown_ = true;
}

void SaleTab::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    const bool wasShort = event->oldSize().height() < linesForAll * fontMetrics().lineSpacing();
    const bool isShort = height() < linesForAll * fontMetrics().lineSpacing();
    if (isShort != wasShort || !event->oldSize().isValid())
        emit roomIsShort(isShort);
}
