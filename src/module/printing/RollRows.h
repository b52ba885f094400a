#pragma once

#include "platform/print/Document.h"
#include "printing/clsVsPrint.h"

#include <vector>

/// Smaller letters cannot be read on thermal paper.
inline constexpr double leastRollPoints = 6;

/// A box of the template in the order in which the boxes of one part of the receipt are printed.
struct RollBox
{
    TemplateBox box;
    int order = 0;
};

/// The rows of a roll receipt below one another on one long page, from the corner that can be printed. A row stands where
/// the template has it. What does not fit its box there in letters that can be read takes the paper's width and further
/// lines, and pushes down what follows.
class RollRows
{
public:
    /// Width that texts may take, in mm of the template, which is drawn at `sngRate`.
    RollRows(double width, float sngRate);

    void addPicture(const QImage &picture, const QSizeF &size) { page_.addPicture(picture, {QPointF(), size}); }
    /// Boxes of one height, from left to right, `sngTop` (mm of the template) lower than they are designed. A sheet may end
    /// above the row unless it belongs to the one before.
    void add(const std::vector<RollBox> &row, float sngTop, bool withRowBefore = false);
    /// Prints what was added since, in its order.
    void endPart();

    /// Whether something beside others had to leave its place.
    bool crowded() const { return crowded_; }
    const print::Document &page() const { return page_; }
    const std::vector<double> &breaks() const { return breaks_; }

private:
    struct Line;
    void place(const RollBox &one, bool alone, float sngTop, Line &line);
    void placeOverLines(RollBox one, float sngTop, Line &line);
    double rightOf(const TemplateBox &box) const;
    double inkOf(const TemplateBox &box) const; ///< width of its text, mm of the template
    void put(const RollBox &one, float sngTop);
    print::TextItem printed(const TemplateBox &box, float sngTop) const;
    void nextLine(Line &line, const TemplateBox &box) const;

    double width_; ///< mm of the template
    float sngRate_;
    double further_ = 0; ///< height of the lines that the template does not have, mm of the template
    bool crowded_ = false;
    std::vector<std::pair<int, print::TextItem>> part_;
    print::Document page_;
    std::vector<double> breaks_{0};
};
