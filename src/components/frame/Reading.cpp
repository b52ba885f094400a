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

Reading::Slice Reading::read(const QString &statement) const
{
    return std::make_shared<const ado::CellTable>(connection_->read(statement));
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
    lowest_ = highest_ = next_ = 0;
    width_ = 1;
    kept_.clear();
    if (figure.isKept)
        kept_ = KeptRows::ofComponent().find(connection_, state_, keptUnder());
    if (!kept_.empty()) {
        highest_ = qint64(kept_.size()) - 1;
        return;
    }
    if (figure.slices == Figure::Slices::Days) {
        highest_ = period().days() - 1;
        width_ = firstDays;
    } else if (figure.slices == Figure::Slices::Keys) {
        highest_ = -1; // no row
        const auto bounds = read(filled(figure.bounds, {}, {}));
        if (bounds->rowCount() > 0 && !Record(*bounds, 0).isNull(0)) {
            lowest_ = Record(*bounds, 0).key(0);
            highest_ = Record(*bounds, 0).key(1);
        }
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

const QString &Reading::statementOf(const Figure &figure) const
{
    return connection_->engine() == ado::Engine::SQLite && !figure.unsummed.isEmpty() ? figure.unsummed
                                                                                      : figure.statement;
}

QString Reading::position(qint64 position) const
{
    return figures_[current_].slices == Figure::Slices::Keys ? QString::number(position)
                                                             : runtime::dateText(period().first.addDays(position));
}

QString Reading::keptUnder() const
{
    const Figure &figure = figures_[current_];
    const QString days = figure.slices == Figure::Slices::Keys ? QString() : period().text();
    return QStringList{filled(statementOf(figure), {}, {}), filled(figure.bounds, {}, {}), days}.join(u'\n');
}

void Reading::step()
{
    if (isDone())
        return;
    if (!begun_)
        begin();
    if (!entered_)
        enter();
    if (next_ <= highest_) {
        if (kept_.empty())
            readSlice();
        else
            take(kept_[std::size_t(next_++)]);
    }
    if (next_ > highest_) {
        ++current_;
        entered_ = false;
    }
    if (isDone())
        end();
}

void Reading::readSlice()
{
    const Figure &figure = figures_[current_];
    const bool whole = figure.slices == Figure::Slices::Whole;
    const qint64 last = std::min(highest_, next_ + width_ - 1);
    const QString statement = filled(statementOf(figure), whole ? runtime::dateText(period().first) : position(next_),
                                     whole ? runtime::dateText(period().last) : position(last));
    QElapsedTimer taken;
    taken.start();
    take(read(statement));
    next_ = last + 1;
    if (taken.elapsed() < quickSlice)
        width_ *= std::clamp<qint64>(aimedSlice / (taken.elapsed() + 1), 2, mostGrowth);
    else if (taken.elapsed() > slowSlice)
        width_ = std::max<qint64>(1, width_ / 2);
}

void Reading::take(const Slice &slice)
{
    const Figure &figure = figures_[current_];
    if (figure.isKept && !state_.isEmpty())
        rows_[keptUnder()].push_back(slice);
    const int count = slice->rowCount();
    for (int row = 0; row < count; ++row)
        figure.take(Record(*slice, row));
}

void Reading::begin()
{
    begun_ = true;
    if (std::ranges::any_of(figures_, &Figure::isKept))
        state_ = connection_->stateSign();
}

/// Rows of one state are kept: what somebody wrote meanwhile may be in some of them and not in others.
void Reading::end()
{
    if (!state_.isEmpty() && state_ == connection_->stateSign())
        KeptRows::ofComponent().keep(connection_, state_, std::move(rows_));
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
