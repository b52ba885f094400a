#include "components/frame/Reading.h"

#include "platform/runtime/Format.h"

#include <QElapsedTimer>

#include <algorithm>

namespace statistics {

namespace {

// Milliseconds of a slice outside of which the next one is wider or narrower. A server takes some for a slice of any
// width, so that narrow ones only make the whole longer: what the window can bear is used.
constexpr qint64 quickSlice = 30;
constexpr qint64 slowSlice = 90;
constexpr qint64 aimedSlice = 45;
constexpr qint64 mostGrowth = 8; ///< at once: the rows of the next slice may lie closer

constexpr qint64 firstDays = 4;

} // namespace

Reading::Reading(ado::ConnectionPtr connection, std::vector<Figure> figures, const Period &period)
    : connection_(std::move(connection))
    , figures_(std::move(figures))
    , period_(period)
{
}

void Reading::run(const QString &statement, const std::function<void(const Record &)> &take) const
{
    ado::Recordset rows;
    rows.Open(statement, connection_, ado::CursorType::ForwardOnly, ado::LockType::ReadOnly);
    const int count = rows.rowCount();
    for (int row = 0; row < count; ++row)
        take(Record(rows, row));
}

const Period &Reading::period() const
{
    const Period &own = figures_[current_].days;
    return own.isValid() ? own : period_;
}

void Reading::enter()
{
    const Figure &figure = figures_[current_];
    entered_ = true;
    lowest_ = highest_ = 0;
    width_ = 1;
    if (figure.slices == Figure::Slices::Days) {
        highest_ = period().days() - 1;
        width_ = firstDays;
    } else if (figure.slices == Figure::Slices::Keys) {
        highest_ = -1; // no row
        run(filled(figure.bounds, {}, {}), [this](const Record &row) {
            lowest_ = row.key(0);
            highest_ = lowest_ == 0 ? -1 : row.key(1);
        });
        width_ = figure.firstKeys;
    }
    next_ = lowest_;
}

QString Reading::filled(const QString &statement, const QString &from, const QString &to) const
{
    const std::pair<const char *, QString> places[] = {{"[FROM]", from},
                                                       {"[TO]", to},
                                                       {"[FIRST]", runtime::dateText(period().first)},
                                                       {"[LAST]", runtime::dateText(period().last)}};
    QString text = statement;
    for (const auto &[mark, value] : places)
        text.replace(QLatin1String(mark), value);
    return text;
}

QString Reading::place(qint64 position) const
{
    return figures_[current_].slices == Figure::Slices::Keys ? QString::number(position)
                                                             : runtime::dateText(period().first.addDays(position));
}

void Reading::step()
{
    if (isDone())
        return;
    if (!entered_)
        enter();
    const Figure &figure = figures_[current_];
    if (next_ <= highest_) {
        const bool whole = figure.slices == Figure::Slices::Whole;
        const qint64 last = std::min(highest_, next_ + width_ - 1);
        const QString statement = filled(figure.statement, whole ? runtime::dateText(period().first) : place(next_),
                                         whole ? runtime::dateText(period().last) : place(last));
        QElapsedTimer taken;
        taken.start();
        run(statement, figure.take);
        next_ = last + 1;
        if (taken.elapsed() < quickSlice)
            width_ *= std::clamp<qint64>(aimedSlice / (taken.elapsed() + 1), 2, mostGrowth);
        else if (taken.elapsed() > slowSlice)
            width_ = std::max<qint64>(1, width_ / 2);
    }
    if (next_ > highest_) {
        ++current_;
        entered_ = false;
    }
}

double Reading::progress() const
{
    if (figures_.empty())
        return 1;
    const double span = double(highest_ - lowest_ + 1);
    const double part = entered_ && span > 0 ? double(next_ - lowest_) / span : 0;
    return (double(current_) + part) / double(figures_.size());
}

void Reading::readAll()
{
    while (!isDone())
        step();
}

} // namespace statistics
