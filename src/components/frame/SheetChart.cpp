#include "components/frame/SheetChart.h"

#include "platform/controls/Named.h"

#include <QtCharts/QBarSet>
#include <QtCharts/QCategoryAxis>
#include <QtCharts/QChart>
#include <QtCharts/QHorizontalBarSeries>
#include <QtCharts/QLegend>
#include <QtCharts/QLineSeries>
#include <QtCharts/QStackedBarSeries>
#include <QtCharts/QValueAxis>

#include <QGraphicsLayout>

#include <algorithm>

namespace statistics {

namespace {

constexpr int mostBars = 130;
constexpr int mostCaptions = 16;

// Told apart by lightness too, for eyes that do not tell the hues.
const QColor seriesColors[]{QColor(0x2E, 0x6E, 0x8E), QColor(0xE0, 0x9F, 0x3E), QColor(0x8F, 0xC1, 0xB5),
                            QColor(0x9E, 0x5A, 0x63), QColor(0xB9, 0xC2, 0xCC), QColor(0x5B, 0x5F, 0x97)};

QColor colorOf(std::size_t series)
{
    return seriesColors[series % std::size(seriesColors)];
}

/// Only here does an amount become a length, for which a double will do.
double lengthOf(runtime::Currency amount, const Chart &plan)
{
    return amount.toDouble() / (plan.inTenThousands ? 10'000.0 : 1.0);
}

/// Lying bars are counted from below.
std::size_t placeOf(std::size_t category, const Chart &plan)
{
    return plan.lying ? std::size_t(plan.categories.size()) - 1 - category : category;
}

QAbstractSeries *bars(const Chart &plan)
{
    const auto series = plan.lying ? static_cast<QAbstractBarSeries *>(new QHorizontalBarSeries)
                                   : static_cast<QAbstractBarSeries *>(new QStackedBarSeries);
    const qsizetype places = plan.categories.size();
    series->setBarWidth(places > 40 ? 0.8 : places > 5 || plan.lying ? 0.6 : 0.2);
    for (std::size_t number = 0; number < plan.series.size(); ++number) {
        auto *set = new QBarSet(plan.series[number].caption);
        set->setColor(colorOf(number));
        set->setBorderColor(colorOf(number));
        std::vector<double> lengths(plan.series[number].values.size());
        for (std::size_t category = 0; category < lengths.size(); ++category)
            lengths[placeOf(category, plan)] = lengthOf(plan.series[number].values[category], plan);
        for (double length : lengths)
            set->append(length);
        series->append(set);
    }
    return series;
}

QList<QAbstractSeries *> lines(const Chart &plan)
{
    QList<QAbstractSeries *> all;
    for (std::size_t number = 0; number < plan.series.size(); ++number) {
        auto *line = new QLineSeries;
        line->setName(plan.series[number].caption);
        line->setPen(QPen(colorOf(number), 1.6));
        for (std::size_t category = 0; category < plan.series[number].values.size(); ++category)
            line->append(double(category), lengthOf(plan.series[number].values[category], plan));
        all << line;
    }
    return all;
}

/// As many captions as can be read, evenly spread.
QCategoryAxis *captions(const Chart &plan)
{
    auto *axis = new QCategoryAxis;
    const auto count = int(plan.categories.size());
    axis->setLabelsPosition(QCategoryAxis::AxisLabelsPositionOnValue);
    axis->setRange(-0.5, count - 0.5);
    const int step = plan.lying ? 1 : (count + mostCaptions - 1) / mostCaptions;
    for (int category = 0; category < count; category += std::max(1, step)) {
        const auto place = int(placeOf(std::size_t(category), plan));
        // Labels are told apart by their text, and are laid down upwards.
        axis->append(plan.categories.at(plan.lying ? place : category), plan.lying ? category : place);
    }
    axis->setGridLineVisible(false);
    return axis;
}

QValueAxis *lengths(const Chart &plan, double lowest, double highest)
{
    auto *axis = new QValueAxis;
    axis->setRange(std::min(0.0, lowest), highest > 0 ? highest * 1.05 : 1);
    axis->setTickCount(plan.lying ? 6 : 4);
    axis->applyNiceNumbers();
    axis->setLabelFormat(axis->max() - axis->min() < 5 ? QStringLiteral("%.1f") : QStringLiteral("%.0f"));
    axis->setGridLineColor(QColor(0xE4, 0xE7, 0xEB));
    return axis;
}

/// Sums of the negative and of the positive values that stand on one place.
std::pair<double, double> reach(const Chart &plan, bool stacked)
{
    double lowest = 0;
    double highest = 0;
    for (std::size_t category = 0; category < std::size_t(plan.categories.size()); ++category) {
        double below = 0;
        double above = 0;
        for (const Chart::Series &series : plan.series) {
            const double length = lengthOf(series.values[category], plan);
            below = stacked ? below + std::min(0.0, length) : std::min(below, length);
            above = stacked ? above + std::max(0.0, length) : std::max(above, length);
        }
        lowest = std::min(lowest, below);
        highest = std::max(highest, above);
    }
    return {lowest, highest};
}

} // namespace

SheetChart::SheetChart(QWidget *parent)
    : QChartView(new QChart, parent)
{
    controls::named(this, QStringLiteral("chtReport"));
    setAccessibleName(QStringLiteral("통계 그래프"));
    setRenderHint(QPainter::Antialiasing);
    setFocusPolicy(Qt::NoFocus);
    chart()->setMargins({4, 0, 8, 0});
    chart()->layout()->setContentsMargins(0, 0, 0, 0);
    chart()->setBackgroundRoundness(0);
    chart()->setLocalizeNumbers(true);
    chart()->legend()->setAlignment(Qt::AlignRight);
    QFont title = font();
    title.setBold(true);
    chart()->setTitleFont(title);
}

void SheetChart::setPlan(const Chart &plan)
{
    chart()->removeAllSeries();
    const QList<QAbstractAxis *> axes = chart()->axes();
    for (QAbstractAxis *axis : axes) {
        chart()->removeAxis(axis);
        delete axis;
    }
    chart()->setTitle(plan.categories.isEmpty()
                          ? QString()
                          : plan.title + (plan.inTenThousands ? QStringLiteral(" (만원)") : QString()));
    if (plan.categories.isEmpty())
        return;
    const bool asLines = !plan.lying && plan.categories.size() > mostBars;
    const auto [lowest, highest] = reach(plan, !asLines && !plan.lying);
    QAbstractAxis *along = captions(plan);
    QAbstractAxis *up = lengths(plan, lowest, highest);
    for (QAbstractAxis *axis : {along, up})
        axis->setLabelsFont(font());
    chart()->addAxis(along, plan.lying ? Qt::AlignLeft : Qt::AlignBottom);
    chart()->addAxis(up, plan.lying ? Qt::AlignBottom : Qt::AlignLeft);
    const QList<QAbstractSeries *> all = asLines ? lines(plan) : QList<QAbstractSeries *>{bars(plan)};
    for (QAbstractSeries *series : all) {
        chart()->addSeries(series);
        series->attachAxis(along);
        series->attachAxis(up);
    }
    chart()->legend()->setVisible(plan.series.size() > 1);
    chart()->legend()->setFont(font());
}

} // namespace statistics
