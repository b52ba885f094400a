#include "platform/controls/FindBar.h"

#include "platform/controls/EventEdge.h"
#include "platform/controls/Named.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Format.h"

#include <QAbstractItemModel>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPointer>

#include <algorithm>

namespace controls {

namespace {

const QString noneFits = QStringLiteral("없습니다");
const QString searchKeys = QStringLiteral("검색 Ctrl+F, 다음 Enter·F3, 이전 Shift+F3, 목록으로 ↓, 지우기 Esc");

QString grouped(int number)
{
    return runtime::Format(number, QStringLiteral("#,##0"));
}

bool isEnter(int key)
{
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

} // namespace

FindBar::FindBar(RecordsetGrid *grid, const Design &design, QWidget *parent)
    : QWidget(parent)
    , grid_(grid)
    , box_(named(new SearchBox, QStringLiteral("txtFind") + design.name))
    , place_(named(new QLabel, QStringLiteral("lblFind") + design.name))
    , rows_(design.fields, design.reading)
    , codeField_(design.codeField)
{
    box_->setPlaceholderText(design.placeholder);
    box_->setAccessibleName(design.what + QStringLiteral(" 검색"));
    box_->setAccessibleDescription(searchKeys);
    box_->setToolTip(searchKeys);
    box_->setClearButtonEnabled(true);
    place_->setTextFormat(Qt::PlainText);
    place_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(box_, 1);
    layout->addWidget(place_);
    fixPlace();
    setFocusProxy(box_);
    setTabOrder(box_, grid_);

    later_.setSingleShot(true);
    later_.setInterval(0);
    connect(&later_, &QTimer::timeout, this, [this] { runEvent([this] { catchUp(); }, this); });
    onEvent(box_, &SearchBox::typed, this, [this](const QString &) { search(); });
    connect(grid_, &RecordsetGrid::rowChange, this, &FindBar::showPlace);
    connect(grid_->model(), &QAbstractItemModel::modelReset, this, &FindBar::rowsCameAnew);
    connect(grid_->model(), &QAbstractItemModel::rowsRemoved, this, &FindBar::rowsCameAnew);
    box_->installEventFilter(this);
    grid_->installEventFilter(this);
}

void FindBar::takeFocus()
{
    box_->setFocus(Qt::ShortcutFocusReason);
    box_->selectAll();
}

void FindBar::rowsCameAnew()
{
    rows_.forget();
    hits_.clear();
    if (!box_->shownText().isEmpty() || box_->hasFocus())
        later_.start();
}

/// Marks what fits among rows that came anew, and moves nowhere; makes the first key stroke of a search a quick one.
void FindBar::catchUp()
{
    later_.stop();
    if (box_->shownText().isEmpty())
        prepare();
    else
        mark();
}

/// Whether there are texts to look through. A failure is told beside the line: a box would come with every key.
bool FindBar::prepare()
{
    const ado::Recordset *const rows = grid_->dataSource();
    runtime::Attempt attempt;
    if (rows && rows->isOpen())
        attempt([&] { rows_.prepare(*rows); });
    failed_ = attempt.failed();
    return rows_.isReady();
}

void FindBar::mark()
{
    const QString typed = box_->shownText();
    failed_ = false;
    hits_ = !typed.isEmpty() && prepare() ? rows_.find(typed) : std::vector<int>();
    grid_->setFoundRows(hits_);
    showPlace();
}

void FindBar::search()
{
    later_.stop();
    mark();
    if (!hits_.empty())
        grid_->chooseRow(hits_.front());
}

void FindBar::goOn()
{
    const int row = rowOfCode();
    if (row < 0)
        return step(+1);
    const QPointer<FindBar> alive(this);
    grid_->chooseRow(row);
    if (alive && placeOfCurrent() >= 0)
        emit codeEntered();
}

/// To the next row that fits, from wherever the list stands.
void FindBar::step(int by)
{
    if (hits_.empty())
        return;
    const int row = grid_->dataSource()->currentRow();
    const auto at = std::ranges::lower_bound(hits_, row);
    const bool stands = at != hits_.end() && *at == row;
    const auto count = hits_.end() - hits_.begin();
    const auto place = at - hits_.begin() + (by < 0 ? -1 : stands ? 1 : 0);
    grid_->chooseRow(hits_[std::size_t((place + count) % count)]);
}

/// The one row that holds what was typed as a whole word of its code field; -1 for none, and for several.
int FindBar::rowOfCode() const
{
    const ado::Recordset *const rows = grid_->dataSource();
    const int column = !rows || codeField_.isEmpty() || hits_.empty() ? -1 : rows->columnIndex(codeField_);
    const QString code = box_->shownText().trimmed();
    int found = -1;
    for (std::size_t at = 0; column >= 0 && at < hits_.size(); ++at) {
        if (!runtime::hasWord(runtime::text(rows->valueAt(hits_[at], column)), code))
            continue;
        if (found >= 0)
            return -1;
        found = hits_[at];
    }
    return found;
}

int FindBar::placeOfCurrent() const
{
    const ado::Recordset *const rows = grid_->dataSource();
    const int row = rows && rows->isOpen() ? rows->currentRow() : -1;
    const auto at = std::ranges::lower_bound(hits_, row);
    return at != hits_.end() && *at == row ? int(at - hits_.begin()) : -1;
}

void FindBar::showPlace()
{
    if (later_.isActive())
        return;
    const QString text = placeText();
    const int needed = place_->fontMetrics().horizontalAdvance(text);
    if (needed > place_->width())
        place_->setFixedWidth(needed);
    place_->setText(text);
}

QString FindBar::placeText() const
{
    if (failed_)
        return QStringLiteral("가져오지 못했습니다");
    if (runtime::SearchPattern(box_->shownText()).isEmpty())
        return {};
    if (hits_.empty())
        return noneFits;
    const int place = placeOfCurrent();
    return QStringLiteral("%1 / %2").arg(place < 0 ? QStringLiteral("–") : grouped(place + 1),
                                         grouped(int(hits_.size())));
}

/// A text that could change the label's size would have the whole window laid out and painted with every key.
void FindBar::fixPlace()
{
    int width = 0;
    for (const QString &text : {noneFits, QStringLiteral("999 / 999")})
        width = std::max(width, place_->fontMetrics().horizontalAdvance(text));
    place_->setFixedSize(width, box_->sizeHint().height());
}

void FindBar::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        fixPlace();
}

/// Keys of the line, and of the grid while something is marked.
bool FindBar::takesKey(const QObject *watched, const QKeyEvent &event) const
{
    const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier;
    if (event.key() == Qt::Key_F3)
        return (modifiers == Qt::NoModifier || modifiers == Qt::ShiftModifier) && (watched == box_ || !hits_.empty());
    if (watched != box_ || modifiers != Qt::NoModifier)
        return false;
    return isEnter(event.key()) || event.key() == Qt::Key_Down
           || (event.key() == Qt::Key_Escape && !box_->text().isEmpty());
}

void FindBar::keyPressed(const QKeyEvent &event)
{
    if (event.key() == Qt::Key_Escape)
        return box_->clear();
    if (event.key() == Qt::Key_Down)
        return grid_->setFocus(Qt::OtherFocusReason);
    if (later_.isActive())
        catchUp();
    if (event.key() == Qt::Key_F3)
        return step(event.modifiers().testFlag(Qt::ShiftModifier) ? -1 : +1);
    goOn();
}

bool FindBar::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn && watched == box_ && !rows_.isReady())
        later_.start();
    const bool offered = event->type() == QEvent::ShortcutOverride; // and taken before a shortcut of the window
    if (!offered && event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const auto &key = *static_cast<QKeyEvent *>(event);
    if (!takesKey(watched, key))
        return QWidget::eventFilter(watched, event);
    event->accept();
    if (!offered)
        runEvent([&] { keyPressed(key); }, box_);
    return true;
}

} // namespace controls
