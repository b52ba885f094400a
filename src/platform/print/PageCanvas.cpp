#include "platform/print/PageCanvas.h"

#include "platform/controls/Palette.h"
#include "platform/print/Lengths.h"

#include <QPaintEvent>
#include <QPainter>

namespace print {

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
    drawPage(painter, document_->pages()[std::size_t(page_)], zoom_ * dotsPerInch());
}

} // namespace print
