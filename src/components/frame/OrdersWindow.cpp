#include "components/frame/OrdersWindow.h"

#include "components/frame/SheetView.h"
#include "platform/controls/EventEdge.h"
#include "platform/controls/Named.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace statistics {

OrdersWindow::OrdersWindow(QWidget *parent, Behind behind, ado::ConnectionPtr connection)
    : QDialog(parent)
    , list_(std::move(behind))
    , connection_(std::move(connection))
    , table_(new SheetView)
    , lblState_(controls::named(new QLabel(QStringLiteral("가져오는 중입니다.")), QStringLiteral("lblOrders")))
    , prgReading_(controls::named(new QProgressBar, QStringLiteral("prgOrders")))
{
    const Behind &of = list_.behind();
    setWindowTitle(QStringLiteral("거래 내역"));
    auto *figure = controls::named(new QLabel, QStringLiteral("lblFigure"));
    figure->setTextFormat(Qt::PlainText);
    figure->setText(QStringLiteral("%1 · %2 %3%4   (%5)")
                        .arg(of.of, of.column.caption, shownText(of.figure),
                             of.column.kind == Column::Kind::Money ? QStringLiteral("원") : QString(),
                             of.period.text()));
    QFont bold = figure->font();
    bold.setBold(true);
    figure->setFont(bold);
    table_->setSheet(list_.sheet());
    prgReading_->setRange(0, 1000);
    prgReading_->setFormat(QStringLiteral("%p%"));
    prgReading_->setMaximumWidth(200);
    prgReading_->setAccessibleName(QStringLiteral("가져오는 중"));
    prgReading_->hide();
    auto *close = controls::named(new QPushButton(QStringLiteral("닫기")), QStringLiteral("cmdClose"));
    close->setAutoDefault(false);

    auto *foot = new QHBoxLayout;
    foot->addWidget(lblState_, 1);
    foot->addWidget(prgReading_);
    foot->addWidget(close);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(figure);
    layout->addWidget(table_, 1);
    layout->addLayout(foot);
    resize(880, 480);
    controls::onEvent(close, &QPushButton::clicked, this, [this](bool) { reject(); });
    wire();
    read(list_.orders());
}

void OrdersWindow::wire()
{
    using controls::onEvent;
    onEvent(&work_, &ReadingWork::progressed, this, [this](double part) {
        prgReading_->setValue(int(part * 1000));
        prgReading_->show();
    });
    onEvent(&work_, &ReadingWork::failed, this, [this](const QString &description) {
        prgReading_->hide();
        lblState_->setText(QStringLiteral("거래를 가져오지 못했습니다: ")
                           + QString(description).replace(QLatin1Char('\n'), QLatin1Char(' ')));
    });
    onEvent(&work_, &ReadingWork::finished, this, [this] {
        if (!hasDetails_) {
            hasDetails_ = true;
            read(list_.details());
            return;
        }
        showRead();
    });
}

void OrdersWindow::read(std::vector<Figure> figures)
{
    work_.start(Reading(connection_, std::move(figures), list_.behind().period));
}

void OrdersWindow::showRead()
{
    prgReading_->hide();
    table_->setSheet(list_.sheet());
    table_->setFocus();
    const QString count = shownText(runtime::Currency::fromWon(std::int64_t(list_.count()))) + QStringLiteral("건");
    lblState_->setText(list_.isWhole() ? count
                                       : count
                                             + QStringLiteral("   그 사이에 내역이 바뀌었습니다. 닫고 '새로고침'을 "
                                                              "누르십시오."));
}

} // namespace statistics
