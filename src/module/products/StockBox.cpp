#include "products/StockBox.h"

#include "data/clsSQL.h"
#include "forms/FormRow.h"
#include "forms/clsMyFunctions.h"
#include "platform/ado/Foresight.h"
#include "platform/controls/EventEdge.h"
#include "platform/controls/Named.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Operation.h"
#include "session/modGlobalVars.h"

namespace {

struct StockFigures
{
    qint32 incoming = 0;
    qint32 sale = 0;
    qint32 loss = 0;
    qint32 service = 0;
};

/// One figure of the current row; NULL leaves it as it is.
void readFigure(const ado::Recordset &row, const QString &field, qint32 &figure)
{
    const QVariant value = row[field];
    if (!runtime::isNull(value))
        figure = runtime::CLng(value);
}

StockFigures sumStock(ProductKey product)
{
    ado::Foresight next(gcnnMasterDB);
    StockBox::tell(next, product);
    StockFigures figures;
    ado::Recordset sums;
    sums.Open(clsSQL().getStockSaleTotCountSQL(product.number()), gcnnMasterDB, ado::CursorType::Static,
              ado::LockType::ReadOnly);
    if (sums.hasCurrent()) {
        readFigure(sums, QStringLiteral("일반판매토탈"), figures.sale);
        readFigure(sums, QStringLiteral("망실토탈"), figures.loss);
        readFigure(sums, QStringLiteral("서비스토탈"), figures.service);
    }
    sums.Close();
    sums.Open(clsSQL().getStockIncomingTotCountSQL(product.number()), gcnnMasterDB, ado::CursorType::Static,
              ado::LockType::ReadOnly);
    if (sums.hasCurrent())
        readFigure(sums, QStringLiteral("입고량"), figures.incoming);
    return figures;
}

/// Raises Overflow as soon as one step leaves 32 bits, also where the next would come back.
qint32 remainder(const StockFigures &figures)
{
    qint32 left = figures.sale;
    for (const qint32 figure : {figures.loss, figures.service})
        left = runtime::toLong(std::int64_t(left) + figure);
    return runtime::toLong(std::int64_t(figures.incoming) - left);
}

// Index of the box, in the order in which they are read from top to bottom.
struct StockLine
{
    std::size_t index;
    const char16_t *caption;
};
constexpr StockLine stockLines[] = {
    {0, u"총입고:"}, {1, u"총판매:"}, {3, u"총서비스:"}, {4, u"총망실:"}, {2, u"나머지:"}};

} // namespace

StockBox::StockBox(SaleSession &session, QWidget *parent)
    : QGroupBox(QStringLiteral("재고현황 보기"), parent)
    , session_(session)
    , cmdRefreshProdStat_(
          controls::named(new QPushButton(QStringLiteral("새로고침")), QStringLiteral("cmdRefreshProdStat")))
{
    auto *form = new QGridLayout(this);
    form->setVerticalSpacing(3);
    int row = 0;
    for (const StockLine &line : stockLines) {
        auto *box = controls::named(new QLineEdit, QStringLiteral("txtProdStat"), int(line.index));
        box->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        clsMyFunctions::keepReadOnly(box);
        addFormRow(form, row++, 0, QString::fromUtf16(line.caption), box);
        txtProdStat_[line.index] = box;
    }
    cmdRefreshProdStat_->setAutoDefault(false);
    form->addWidget(cmdRefreshProdStat_, row, 0, 1, 2);
    form->setRowStretch(row + 1, 1);
    controls::onEvent(cmdRefreshProdStat_, &QPushButton::clicked, this, [this](bool) { refreshClicked(); });
}

void StockBox::tell(ado::Foresight &next, ProductKey product)
{
    next.open(clsSQL().getStockSaleTotCountSQL(product.number()), ado::CursorType::Static)
        .open(clsSQL().getStockIncomingTotCountSQL(product.number()), ado::CursorType::Static);
}

void StockBox::clear()
{
    for (QLineEdit *box : txtProdStat_)
        box->clear();
}

void StockBox::loadStockFigures(ProductKey product)
{
    const runtime::Operation operation("sum stock", {{"product", product.number()}});
    runtime::Attempt attempt;
    attempt([&] {
        const StockFigures figures = sumStock(product);
        txtProdStat_[0]->setText(QString::number(figures.incoming));
        txtProdStat_[1]->setText(QString::number(figures.sale));
        txtProdStat_[3]->setText(QString::number(figures.service));
        txtProdStat_[4]->setText(QString::number(figures.loss));
        txtProdStat_[2]->setText(QString::number(remainder(figures)));
    });
}

void StockBox::refreshClicked()
{
    // An empty list is not tested for: the recordset raises its error, which the user sees.
    if (!session_.rsSaleProductListsManager)
        return;
    const QVariant key = session_.rsSaleProductListsManager->value(QStringLiteral("PM_PK"));
    if (!runtime::isNull(key))
        loadStockFigures(ProductKey(key));
}
