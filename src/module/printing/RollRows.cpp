#include "printing/RollRows.h"

#include "platform/runtime/RuntimeError.h"

#include <algorithm>

namespace {

/// A text alone in its row goes on in further lines rather than below this part of its size.
constexpr double leastAlone = 0.8;

/// Dashes are a line to look at, not letters to read.
bool isRule(const QString &text)
{
    return text.count(QLatin1Char('-')) == text.size();
}

} // namespace

/// Where the pen stands in a row.
struct RollRows::Line
{
    double down = 0;  ///< further lines above it, mm of the template
    double taken = 0; ///< right end of what left its place on this line
    double inked = 0; ///< right end of all that stands on it
};

RollRows::RollRows(double width, float sngRate)
    : width_(width)
    , sngRate_(sngRate)
{
}

void RollRows::add(const std::vector<RollBox> &row, float sngTop, bool withRowBefore)
{
    sngTop += float(further_);
    if (!withRowBefore) {
        double top = row.front().box.place.top();
        for (const RollBox &one : row)
            top = std::min(top, one.box.place.top());
        const double height = (top + double(sngTop)) * double(sngRate_);
        if (height > breaks_.back())
            breaks_.push_back(height);
    }
    Line line;
    for (const RollBox &one : row)
        place(one, row.size() == 1, sngTop, line);
    further_ += line.down;
}

print::TextItem RollRows::printed(const TemplateBox &box, float sngTop) const
{
    print::Document alone;
    TemplateBox inside = box;
    inside.place.setRight(std::min(box.place.right(), width_));
    inside.room = std::min(box.room, width_ - box.place.left());
    clsVsPrint().PrintTextBox2VsPrint(0, sngTop, sngRate_, inside, alone);
    return alone.pages().front().texts.front();
}

void RollRows::put(const RollBox &one, float sngTop)
{
    part_.emplace_back(one.order, printed(one.box, sngTop));
}

void RollRows::nextLine(Line &line, const TemplateBox &box) const
{
    line.down += print::lineHeight(printed(box, 0).font) / double(sngRate_);
    line.taken = line.inked = 0;
}

void RollRows::place(const RollBox &one, bool alone, float sngTop, Line &line)
{
    if (one.box.text.isEmpty())
        return;
    const print::TextItem item = printed(one.box, sngTop);
    const bool mayBreak = alone && one.box.align == print::Align::Left;
    const double least = std::max(leastRollPoints, mayBreak ? leastAlone * item.font.points : 0);
    if (!isRule(one.box.text) && print::pointsOnOneLine(item) < least) {
        crowded_ = crowded_ || !mayBreak;
        return placeOverLines(one, sngTop, line);
    }
    if (one.box.place.left() < line.taken)
        nextLine(line, one.box);
    put(one, sngTop + float(line.down));
    line.inked = std::max(line.inked, rightOf(one.box));
}

/// Where its ink ends, mm of the template.
double RollRows::rightOf(const TemplateBox &box) const
{
    return box.align == print::Align::Left ? box.place.left() + inkOf(box) : box.place.right();
}

double RollRows::inkOf(const TemplateBox &box) const
{
    return print::widthOnOneLine(printed(box, 0)) / double(sngRate_);
}

void RollRows::placeOverLines(RollBox one, float sngTop, Line &line)
{
    TemplateBox &box = one.box;
    const bool left = box.align == print::Align::Left;
    box.room = 0;
    if (left)
        box.place.setRight(width_);
    else
        box.place.setLeft(0);
    const bool meetsOthers = left ? box.place.left() < line.taken : box.place.right() - inkOf(box) < line.inked;
    if (meetsOthers)
        nextLine(line, box);
    const QString whole = box.text;
    const QStringList lines = left ? print::linesOf(printed(box, sngTop)) : QStringList(whole);
    for (const QString &text : lines) {
        if (&text != &lines.front())
            nextLine(line, box);
        box.text = text;
        if (print::pointsOnOneLine(printed(box, sngTop)) < leastRollPoints)
            throw runtime::RuntimeError(runtime::ErrorNumber::InvalidCall,
                                        QStringLiteral("영수증을 출력하기에는 프린터의 용지 폭이 너무 좁습니다."));
        put(one, sngTop + float(line.down));
    }
    line.taken = line.inked = rightOf(box);
}

void RollRows::endPart()
{
    std::stable_sort(part_.begin(), part_.end(), [](const auto &a, const auto &b) { return a.first < b.first; });
    for (const auto &[order, item] : part_)
        page_.addText(item);
    part_.clear();
}
