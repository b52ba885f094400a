#include "platform/print/PageCanvas.h"

#include "platform/controls/Palette.h"
#include "platform/controls/Spoken.h"
#include "platform/print/Lengths.h"

#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <utility>
#include <vector>

namespace print {

namespace {

/// The texts as they are read: from above, in a line from the left.
QString spokenPage(const Page &page)
{
    std::vector<const TextItem *> texts;
    for (const TextItem &text : page.texts)
        texts.push_back(&text);
    std::stable_sort(texts.begin(), texts.end(), [](const TextItem *one, const TextItem *other) {
        return std::pair(qRound(one->box.top()), one->box.left())
               < std::pair(qRound(other->box.top()), other->box.left());
    });
    QStringList words;
    for (const TextItem *text : texts)
        words << controls::spokenMoney(text->text.trimmed());
    words += page.drawing.words;
    words.removeAll(QString());
    return words.join(u'\n');
}

} // namespace

PageCanvas::PageCanvas(QWidget *parent)
    : QWidget(parent)
{
    setAutoFillBackground(false);
}

double PageCanvas::dotsPerInch() const
{
    return logicalDpiX();
}

void PageCanvas::setPage(const Document &document, int page, double zoom)
{
    document_ = &document;
    page_ = page;
    zoom_ = zoom;
    setAccessibleDescription(spokenPage(document.pages()[std::size_t(page)]));
    resize((document.paper() * (zoom * dotsPerInch() / mmPerInch)).toSize());
    update();
}

void PageCanvas::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    painter.fillRect(event->rect(), controls::colors(controls::Ground::Paper).back);
    if (!document_)
        return;
    painter.setRenderHints(QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
    drawPage(painter, document_->pages()[std::size_t(page_)], document_->scale() * zoom_ * dotsPerInch());
}

} // namespace print
