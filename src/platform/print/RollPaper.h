#pragma once

#include <QMarginsF>
#include <QString>

#include <vector>

namespace print {

/// The paper of a printer as its description tells it, mm.
struct RollPaper
{
    double width = 0;
    QMarginsF edges{};             ///< where the printer prints nothing
    std::vector<double> lengths{}; ///< of its sheets of this width, the printer's own one first
    double shortest = 0;           ///< any length from here ...
    double longest = 0;            ///< ... to there; 0: those above only

    double printableWidth() const { return width - edges.left() - edges.right(); }
    /// Length of the sheet for contents of this height with empty paper below them: as long as they are, where the printer
    /// takes that; else its own, or another in one piece where the own is too short and that is no waste.
    double lengthFor(double height, double feed) const;
};

/// Paper without edges of any length.
RollPaper endlessRoll(double width);
/// Raises InvalidCall when the printer cannot tell its paper.
RollPaper rollPaperOf(const QString &printer);

} // namespace print
