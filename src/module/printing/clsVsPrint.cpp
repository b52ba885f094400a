#include "printing/clsVsPrint.h"

#include "platform/print/Lengths.h"

namespace {

/// Used as it stands, though a millimetre has 56.69 twips.
constexpr double twipsPerMm = 56.7;
/// Boxes are printed higher than they are, so that no text is cut at its lower edge.
constexpr double moreHeight = 10;

QRectF onPaper(const QRectF &place, double left, double top, double rate)
{
    const auto printed = [rate](double mm) { return print::fromTwips(mm * twipsPerMm * rate); };
    return {printed(place.left() + left), printed(place.top() + top), printed(place.width()),
            printed(place.height() + moreHeight)};
}

QRectF placeOnScreen(const QWidget &control)
{
    const double mmPerDot = print::mmPerInch / control.logicalDpiX();
    return {QPointF(control.pos()) * mmPerDot, QSizeF(control.size()) * mmPerDot};
}

print::TextFont fontOf(const QWidget &control)
{
    return {control.font().family(), control.font().pointSizeF(), control.font().bold()};
}

} // namespace

bool clsVsPrint::PrintTextBox2VsPrint(float sngLeft, float sngTop, float sngRate, const TemplateBox &box,
                                      print::Document &vsPrint) const
{
    QRectF place = box.place;
    if (box.room > 0)
        place.setWidth(box.room);
    print::TextItem item{
        .text = box.text, .box = onPaper(place, sngLeft, sngTop, sngRate), .font = box.font, .align = box.align};
    item.font.points *= sngRate;
    vsPrint.addText(item);
    return true;
}

bool clsVsPrint::PrintMultiLineTextBox2VsPrint(float sngLeft, float sngTop, float sngRate, QPlainTextEdit &box,
                                               print::Document &vsPrint, const QString &text) const
{
    box.setPlainText(text);
    TemplateBox copy{.text = text, .place = placeOnScreen(box), .font = fontOf(box)};
    copy.font.bold = false;
    const Qt::Alignment alignment = box.document()->defaultTextOption().alignment();
    if (alignment & Qt::AlignRight)
        copy.align = print::Align::Right;
    else if (alignment & Qt::AlignHCenter)
        copy.align = print::Align::Center;
    return PrintTextBox2VsPrint(sngLeft, sngTop, sngRate, copy, vsPrint);
}

bool clsVsPrint::PrintComboBox2VsPrint(float sngLeft, float sngTop, float sngRate, const QComboBox &box,
                                       print::Document &vsPrint) const
{
    const TemplateBox copy{
        .text = box.currentText(), .place = placeOnScreen(box), .font = fontOf(box), .align = print::Align::Center};
    return PrintTextBox2VsPrint(sngLeft, sngTop, sngRate, copy, vsPrint);
}
