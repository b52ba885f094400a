#include "components/frame/SheetView.h"

#include "platform/controls/LargeFigure.h"
#include "platform/controls/Named.h"

#include <QEvent>
#include <QHeaderView>
#include <QScrollBar>
#include <QShortcut>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

#include <algorithm>

namespace statistics {

namespace {

constexpr int rowHeight = 24;
constexpr int numberColumn = 36; // the running number at the left
constexpr int cellPadding = 14;
constexpr int captionPadding = 8;
constexpr double leastNumber = 0.7; // of its full size

/// A number without its last digits is another number: one that is wider than its cell is drawn smaller.
class WholeNumbers : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        if (!(option->displayAlignment & Qt::AlignRight))
            return;
        option->font = controls::fontThatFits(option->font, option->text, option->rect.width() - drawnPadding);
        option->fontMetrics = QFontMetrics(option->font);
        option->textElideMode = Qt::ElideNone;
    }

private:
    static constexpr int drawnPadding = 8; // the style's own, both sides
};

void dressTable(QTableView *table)
{
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setWordWrap(false);
    table->setItemDelegate(new WholeNumbers(table));
    table->setTabKeyNavigation(false);
    table->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table->verticalHeader()->setDefaultSectionSize(rowHeight);
    table->verticalHeader()->setFixedWidth(numberColumn);
    table->verticalHeader()->setDefaultAlignment(Qt::AlignRight | Qt::AlignVCenter);
    table->horizontalHeader()->setHighlightSections(false);
}

} // namespace

SheetView::SheetView(QWidget *parent)
    : QWidget(parent)
    , rows_(new SheetModel(true, this))
    , totals_(new SheetModel(false, this))
    , tblReport_(controls::named(new QTableView, QStringLiteral("tblReport")))
    , tblTotals_(controls::named(new QTableView, QStringLiteral("tblTotals")))
{
    tblReport_->setModel(rows_);
    tblReport_->setAccessibleName(QStringLiteral("통계표"));
    tblReport_->setAlternatingRowColors(true);
    dressTable(tblReport_);
    tblTotals_->setModel(totals_);
    tblTotals_->setAccessibleName(QStringLiteral("합계"));
    dressTable(tblTotals_);
    tblTotals_->horizontalHeader()->hide();
    tblTotals_->setFocusPolicy(Qt::NoFocus);
    tblTotals_->setSelectionMode(QAbstractItemView::NoSelection);
    tblTotals_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    tblTotals_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    tblTotals_->setFixedHeight(rowHeight + 2 * tblTotals_->frameWidth());
    QFont bold = tblTotals_->font();
    bold.setBold(true);
    tblTotals_->setFont(bold);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(tblReport_);
    // The rows' scroll bar stays, so that the totals are as wide as the rows and scroll as far.
    tblReport_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    auto *foot = new QHBoxLayout;
    foot->setSpacing(0);
    foot->addWidget(tblTotals_);
    foot->addSpacing(tblReport_->verticalScrollBar()->sizeHint().width());
    layout->addLayout(foot);

    // A sorted table shows the row that was worked with, wherever it went.
    connect(rows_, &QAbstractItemModel::layoutChanged, this,
            [this] { tblReport_->scrollTo(tblReport_->currentIndex()); });
    tblReport_->viewport()->installEventFilter(this);
    QHeaderView *header = tblReport_->horizontalHeader();
    connect(header, &QHeaderView::sectionResized, this, [this](int column, int, int width) {
        dragged_ = dragged_ || !fitting_;
        tblTotals_->setColumnWidth(column, width);
    });
    connect(tblReport_->horizontalScrollBar(), &QScrollBar::valueChanged, tblTotals_->horizontalScrollBar(),
            &QScrollBar::setValue);
}

void SheetView::setSheet(const Sheet &sheet)
{
    rows_->setRows(sheet.columns, sheet.rows);
    totals_->setRows(sheet.columns, sheet.totals.empty() ? std::vector<Row>{} : std::vector<Row>{sheet.totals});
    // No column leads until one is chosen: the report's own order stands.
    tblReport_->setSortingEnabled(false);
    tblReport_->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    tblReport_->setSortingEnabled(true);
    tblReport_->scrollToTop();
    widths_.clear();
    for (std::size_t column = 0; column < sheet.columns.size(); ++column)
        widths_.push_back(widthOf(sheet.columns[column], int(column)));
    dragged_ = false;
    fitColumns();
}

bool SheetView::eventFilter(QObject *, QEvent *event)
{
    if (event->type() == QEvent::Resize && !dragged_)
        fitColumns();
    return false;
}

SheetView::Width SheetView::widthOf(const Column &plan, int column) const
{
    const QFontMetrics bold(tblTotals_->font());
    const int caption = bold.horizontalAdvance(plan.caption) + captionPadding;
    const int content =
        std::max(tblReport_->fontMetrics().horizontalAdvance(longestText(rows_->rows(), std::size_t(column))),
                 bold.horizontalAdvance(totals_->index(0, column).data().toString()));
    const int full = std::max({plan.width, tblReport_->horizontalHeader()->sectionSizeHint(column),
                               plan.kind == Column::Kind::Text ? 0 : content + cellPadding});
    if (plan.kind == Column::Kind::Text)
        return {std::min(full, std::max(caption, content + cellPadding)), full};
    return {std::min(full, std::max(caption, int(content * leastNumber) + cellPadding)), full};
}

void SheetView::choose(int row)
{
    for (int at = 0; at < rows_->rowCount(); ++at) {
        if (rows_->placeOf(at) == row)
            tblReport_->setCurrentIndex(rows_->index(at, std::max(0, tblReport_->currentIndex().column())));
    }
}

void SheetView::letOpen()
{
    const QString how = QStringLiteral("금액을 두 번 누르거나 Enter를 누르면 거래 내역이 나옵니다.");
    const auto open = [this](const QModelIndex &index) {
        if (index.isValid())
            emit opened(rows_->placeOf(index.row()), index.column());
    };
    tblReport_->viewport()->setToolTip(how);
    tblReport_->setAccessibleDescription(how);
    tblTotals_->viewport()->setToolTip(how);
    connect(tblReport_, &QTableView::doubleClicked, this, open);
    connect(tblTotals_, &QTableView::doubleClicked, this,
            [this](const QModelIndex &index) { emit opened(-1, index.column()); });
    for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto *enter = new QShortcut(key, tblReport_, nullptr, nullptr, Qt::WidgetShortcut);
        connect(enter, &QShortcut::activated, this, [this, open] { open(tblReport_->currentIndex()); });
    }
}

void SheetView::fitColumns()
{
    Width all{0, 0};
    for (const Width &width : widths_) {
        all.least += width.least;
        all.full += width.full;
    }
    // Room that is left over goes to all columns, within measure.
    const int room = std::clamp(tblReport_->viewport()->width(), all.least, std::max(all.least, all.full * 4 / 3));
    fitting_ = true;
    for (int column = 0; column < int(widths_.size()); ++column) {
        const auto [least, full] = widths_[std::size_t(column)];
        const int width = room >= all.full ? full * room / all.full
                                           : least + (full - least) * (room - all.least) / (all.full - all.least);
        tblReport_->setColumnWidth(column, width);
        tblTotals_->setColumnWidth(column, tblReport_->columnWidth(column));
    }
    fitting_ = false;
}

} // namespace statistics
