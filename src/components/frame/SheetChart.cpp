#include "components/frame/SheetChart.h"

#include "platform/controls/Appearance.h"
#include "platform/controls/Named.h"

#include <QtCharts/QBarSeries>
#include <QtCharts/QBarSet>
#include <QtCharts/QCategoryAxis>
#include <QtCharts/QChart>
#include <QtCharts/QHorizontalBarSeries>
#include <QtCharts/QLegend>
#include <QtCharts/QLegendMarker>
#include <QtCharts/QLineSeries>
#include <QtCharts/QStackedBarSeries>
#include <QtCharts/QValueAxis>

#include <QGraphicsLayout>

#include <algorithm>

namespace statistics {

namespace {

constexpr int mostBars = 130;
constexpr int mostCaptions = 16;
constexpr double loneDay = 2.5; ///< pixels of a point on a line chart

// For eyes that do not tell the hues, and on black and white paper: hatching of bars, dashes of lines.
constexpr Qt::BrushStyle hatchings[]{Qt::SolidPattern, Qt::BDiagPattern, Qt::Dense4Pattern,
                                     Qt::FDiagPattern, Qt::CrossPattern, Qt::HorPattern};
constexpr Qt::PenStyle dashes[]{Qt::SolidLine, Qt::DashLine, Qt::DotLine, Qt::DashDotLine, Qt::DashDotDotLine};

/// Of what is drawn in one chart, everything differs up to the sixth series.
QBrush brushOf(std::size_t series, controls::Scheme scheme)
{
    return {controls::seriesColor(series, scheme), hatchings[series % std::size(hatchings)]};
}

QPen penOf(std::size_t series, controls::Scheme scheme)
{
    return {controls::seriesColor(series, scheme), series < std::size(dashes) ? 1.8 : 3.2,
            dashes[series % std::size(dashes)]};
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

/// Nothing but money that goes out.
bool isOutgoing(const std::vector<runtime::Currency> &values)
{
    const runtime::Currency nothing;
    return std::ranges::any_of(values, [&](runtime::Currency value) { return value < nothing; })
           && std::ranges::none_of(values, [&](runtime::Currency value) { return value > nothing; });
}

/// Money that goes out is red; the legend, too, where a series holds nothing else.
void showNegative(QBarSet &set, bool outgoing, controls::Scheme scheme)
{
    const QColor red = controls::ink(controls::Ink::Negative, scheme);
    if (outgoing) {
        set.setColor(red);
        set.setBorderColor(red);
        return;
    }
    QList<int> negative;
    for (int bar = 0; bar < set.count(); ++bar) {
        if (set.at(bar) < 0)
            negative << bar;
    }
    if (negative.isEmpty())
        return;
    set.setSelectedColor(red);
    set.selectBars(negative);
}

QAbstractSeries *bars(const Chart &plan, controls::Scheme scheme)
{
    const auto series = plan.lying    ? static_cast<QAbstractBarSeries *>(new QHorizontalBarSeries)
                        : plan.beside ? static_cast<QAbstractBarSeries *>(new QBarSeries)
                                      : static_cast<QAbstractBarSeries *>(new QStackedBarSeries);
    const qsizetype places = plan.categories.size();
    series->setBarWidth(places > 40 ? 0.8 : places > (plan.lying ? 2 : 5) ? 0.6 : 0.2);
    for (std::size_t number = 0; number < plan.series.size(); ++number) {
        auto *set = new QBarSet(plan.series[number].caption);
        set->setBrush(brushOf(number, scheme));
        set->setBorderColor(controls::seriesColor(number, scheme));
        const std::vector<runtime::Currency> &values = plan.series[number].values;
        std::vector<double> lengths(values.size());
        for (std::size_t category = 0; category < lengths.size(); ++category)
            lengths[placeOf(category, plan)] = lengthOf(values[category], plan);
        for (double length : lengths)
            set->append(length);
        showNegative(*set, isOutgoing(values), scheme);
        series->append(set);
    }
    return series;
}

/// Of a category along its line: on the calendar, where the plan tells it.
int alongLine(std::size_t category, const Chart &plan)
{
    return plan.places.empty() ? int(category) : plan.places[category] - plan.places.front();
}

/// Lines of one series, which is broken where days are passed over. A day between such ones is a point.
QList<QAbstractSeries *> pieces(const Chart &plan, std::size_t number, controls::Scheme scheme)
{
    QList<QAbstractSeries *> all;
    QLineSeries *line = nullptr;
    const std::vector<runtime::Currency> &values = plan.series[number].values;
    QPen pen = penOf(number, scheme);
    if (isOutgoing(values))
        pen.setColor(controls::ink(controls::Ink::Negative, scheme));
    for (std::size_t category = 0; category < values.size(); ++category) {
        if (!line || alongLine(category, plan) > alongLine(category - 1, plan) + 1) {
            line = new QLineSeries;
            line->setName(plan.series[number].caption);
            line->setPen(pen);
            all << line;
        }
        line->append(alongLine(category, plan), lengthOf(values[category], plan));
        line->setMarkerSize(loneDay);
        line->setPointsVisible(line->count() == 1);
    }
    return all;
}

/// As many captions as can be read, evenly spread.
/// As many captions as have room: along the calendar, where rows may crowd in a part of it.
QCategoryAxis *captions(const Chart &plan, bool asLines)
{
    auto *axis = new QCategoryAxis;
    const auto count = int(plan.categories.size());
    const int length = asLines ? alongLine(std::size_t(count) - 1, plan) + 1 : count;
    const int room = plan.lying ? 0 : (length + mostCaptions - 1) / mostCaptions;
    axis->setLabelsPosition(QCategoryAxis::AxisLabelsPositionOnValue);
    axis->setRange(-0.5, length - 0.5);
    for (int category = 0, next = 0; category < count; ++category) {
        const int place = asLines ? alongLine(std::size_t(category), plan) : int(placeOf(std::size_t(category), plan));
        if (!plan.lying && place < next)
            continue;
        next = place + room;
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
    axis->setTruncateLabels(false); // a number is whole or not there
    axis->applyNiceNumbers();
    axis->setLabelFormat(axis->max() - axis->min() < 5 ? QStringLiteral("%.1f") : QStringLiteral("%.0f"));
    return axis;
}

/// The figures of a chart that is not seen: all of a few, of many the sum and the largest.
QString spokenChart(const Chart &plan)
{
    constexpr qsizetype few = 12;
    const QString unit = plan.inTenThousands ? QStringLiteral("원") : QStringLiteral("개");
    const auto said = [&](std::size_t category, runtime::Currency value) {
        return plan.categories.at(qsizetype(category)) + u' ' + shownText(value) + unit;
    };
    QStringList sentences{plan.title};
    for (const Chart::Series &series : plan.series) {
        QStringList figures;
        runtime::Currency sum;
        std::size_t largest = 0;
        for (std::size_t category = 0; category < series.values.size(); ++category) {
            sum = sum + series.values[category];
            largest = series.values[category] > series.values[largest] ? category : largest;
            figures << said(category, series.values[category]);
        }
        if (figures.size() > few)
            figures = {QStringLiteral("합계 ") + shownText(sum) + unit,
                       QStringLiteral("가장 큰 값 ") + said(largest, series.values[largest])};
        sentences << series.caption + QStringLiteral(": ") + figures.join(QStringLiteral(", "));
    }
    return sentences.join(u'\n');
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
    chart()->layout()->setContentsMargins(0, 0, 0, 0);
    chart()->setBackgroundRoundness(0);
    chart()->setLocalizeNumbers(true);
    chart()->legend()->setAlignment(Qt::AlignRight);
    QFont title = font();
    title.setBold(true);
    chart()->setTitleFont(title);
    controls::followColors(this, [this] {
        if (!plan_.categories.isEmpty())
            setPlan(Chart(plan_));
        else
            dress();
    });
}

/// The chart takes its colours from themes of its own, not from the window.
void SheetChart::dress()
{
    const auto [back, text] = controls::colors(controls::Ground::Field, scheme());
    chart()->setBackgroundBrush(back);
    chart()->setTitleBrush(text);
    chart()->legend()->setLabelColor(text);
    const QList<QAbstractAxis *> axes = chart()->axes();
    for (QAbstractAxis *axis : axes) {
        axis->setLabelsColor(text);
        axis->setLinePenColor(text);
        axis->setGridLineColor(controls::chartScale(scheme()));
    }
}

void SheetChart::keepLight()
{
    keepsLight_ = true;
    dress();
}

void SheetChart::setPlan(const Chart &plan)
{
    plan_ = plan;
    setAccessibleDescription(spokenChart(plan));
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
        return dress();
    const bool asLines = !plan.lying && plan.categories.size() > mostBars;
    const auto [lowest, highest] = reach(plan, !asLines && !plan.lying && !plan.beside);
    // The last caption may stand at the very end of its axis.
    const int end = plan.lying ? 0 : fontMetrics().horizontalAdvance(plan.categories.constLast()) / 2;
    chart()->setMargins({4, 0, std::max(8, end), 0});
    QAbstractAxis *along = captions(plan, asLines);
    QAbstractAxis *up = lengths(plan, lowest, highest);
    for (QAbstractAxis *axis : {along, up})
        axis->setLabelsFont(font());
    chart()->addAxis(along, plan.lying ? Qt::AlignLeft : Qt::AlignBottom);
    chart()->addAxis(up, plan.lying ? Qt::AlignBottom : Qt::AlignLeft);
    const auto add = [&](const QList<QAbstractSeries *> &pieces) {
        for (QAbstractSeries *series : pieces) {
            chart()->addSeries(series);
            series->attachAxis(along);
            series->attachAxis(up);
            const QList<QLegendMarker *> markers = chart()->legend()->markers(series);
            for (QLegendMarker *marker : markers)
                marker->setVisible(series == pieces.front());
        }
    };
    if (!asLines)
        add({bars(plan, scheme())});
    for (std::size_t number = 0; asLines && number < plan.series.size(); ++number)
        add(pieces(plan, number, scheme()));
    chart()->legend()->setVisible(plan.series.size() > 1);
    chart()->legend()->setFont(font());
    dress();
}

} // namespace statistics
