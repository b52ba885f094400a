#include "components/frame/CustomerFind.h"

#include "components/frame/Sheet.h"
#include "platform/controls/EventEdge.h"
#include "platform/controls/Named.h"

#include <QHBoxLayout>
#include <QKeyEvent>

#include <utility>

namespace statistics {

namespace {

const QString noneFits = QStringLiteral("없습니다");
const QString findKeys = QStringLiteral("검색 Ctrl+F, 다음 Enter·F3, 이전 Shift+F3, 목록으로 ↓, 지우기 Esc");
constexpr int boxWidth = 190;

QString grouped(std::int64_t number)
{
    return shownText(runtime::Currency::fromWon(number));
}

} // namespace

CustomerFind::CustomerFind(QWidget *table, QWidget *parent)
    : QWidget(parent)
    , table_(table)
    , box_(controls::named(new controls::SearchBox, QStringLiteral("txtFindCustomer")))
    , place_(controls::named(new QLabel, QStringLiteral("lblFindCustomer")))
{
    box_->setPlaceholderText(QStringLiteral("고객 이름·챠트번호"));
    box_->setAccessibleName(QStringLiteral("고객 검색"));
    box_->setAccessibleDescription(findKeys);
    box_->setToolTip(findKeys);
    box_->setClearButtonEnabled(true);
    box_->setFixedWidth(boxWidth);
    box_->installEventFilter(this);
    for (const QString &text : {noneFits, QStringLiteral("999 / 9,999")})
        place_->setMinimumWidth(std::max(place_->minimumWidth(), place_->fontMetrics().horizontalAdvance(text)));
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(box_);
    row->addWidget(place_);
    setFocusProxy(box_);
    controls::onEvent(box_, &controls::SearchBox::typed, this, [this](const QString &) { search(); });
}

void CustomerFind::setTexts(Texts texts)
{
    make_ = std::move(texts);
    texts_.clear();
    find(); // marks how many fit, and moves nowhere
}

void CustomerFind::takeFocus()
{
    box_->setFocus(Qt::ShortcutFocusReason);
    box_->selectAll();
}

void CustomerFind::find()
{
    hits_.clear();
    at_ = -1;
    if (!box_->shownText().isEmpty() && make_) {
        if (texts_.rows() == 0)
            texts_ = make_();
        hits_ = texts_.find(box_->shownText());
    }
    showPlace();
}

void CustomerFind::search()
{
    find();
    if (box_->shownText().isEmpty())
        emit found(-1);
    else
        step(+1);
}

void CustomerFind::step(int by)
{
    if (hits_.empty())
        return;
    const auto count = int(hits_.size());
    at_ = at_ < 0 ? (by > 0 ? 0 : count - 1) : (at_ + count + by) % count;
    showPlace();
    emit found(hits_[std::size_t(at_)]);
}

void CustomerFind::showPlace()
{
    const QString place = at_ < 0 ? QStringLiteral("–") : grouped(at_ + 1);
    place_->setText(box_->shownText().isEmpty() ? QString()
                    : hits_.empty()             ? noneFits
                                                : place + QStringLiteral(" / ") + grouped(std::int64_t(hits_.size())));
}

bool CustomerFind::eventFilter(QObject *watched, QEvent *event)
{
    const bool offered = event->type() == QEvent::ShortcutOverride; // and taken before a shortcut of the window
    if (watched != box_ || (!offered && event->type() != QEvent::KeyPress))
        return QWidget::eventFilter(watched, event);
    const auto &key = *static_cast<QKeyEvent *>(event);
    const std::pair<int, std::function<void()>> answers[] = {
        {Qt::Key_Return, [this] { step(+1); }},
        {Qt::Key_Enter, [this] { step(+1); }},
        {Qt::Key_F3, [this, &key] { step(key.modifiers().testFlag(Qt::ShiftModifier) ? -1 : +1); }},
        {Qt::Key_Down, [this] { table_->setFocus(Qt::OtherFocusReason); }},
        {Qt::Key_Escape, [this] { box_->clear(); }},
    };
    for (const auto &[code, answer] : answers) {
        if (key.key() != code || (code == Qt::Key_Escape && box_->text().isEmpty()))
            continue;
        event->accept();
        if (!offered)
            controls::runEvent(answer, box_);
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace statistics
