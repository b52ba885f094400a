#include "platform/controls/LargeFigure.h"

#include <QEvent>
#include <QFontMetrics>
#include <QStyle>

#include <algorithm>

namespace controls {

namespace {

constexpr double smallest = 0.6;

class LargeFigure : public QObject
{
public:
    LargeFigure(QLineEdit *box, double factor)
        : QObject(box)
        , box_(*box)
        , large_(largeFont(box->font(), factor))
    {
        box->setFont(large_);
        box->setMinimumHeight(box->sizeHint().height());
        box->installEventFilter(this);
        connect(box, &QLineEdit::textChanged, this, [this] { fit(); });
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Resize)
            fit();
        return false;
    }

private:
    void fit()
    {
        // Frame and inner margin of both sides, and the place of the cursor.
        const int edges = 2 * (box_.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, &box_) + 2) + 1;
        const QFont fitting = fontThatFits(large_, box_.text(), box_.width() - edges);
        if (fitting != box_.font())
            box_.setFont(fitting);
    }

    QLineEdit &box_;
    const QFont large_;
};

} // namespace

QFont fontThatFits(QFont font, const QString &text, int room)
{
    const double full = font.pointSizeF();
    for (double size = full; size > full * smallest; size -= 0.25) {
        font.setPointSizeF(size);
        if (QFontMetrics(font).horizontalAdvance(text) <= room)
            return font;
    }
    font.setPointSizeF(full * smallest);
    return font;
}

QFont largeFont(QFont font, double factor)
{
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * factor);
    return font;
}

void showLarge(QLineEdit *box, double factor)
{
    new LargeFigure(box, factor); // goes with the box
}

} // namespace controls
