#pragma once

#include "components/frame/Figure.h"
#include "components/frame/Period.h"
#include "components/frame/Sheet.h"

#include <QStringList>

#include <vector>

namespace statistics {

/// What one component differs in: its statements, and the sheet that their rows make.
class Report
{
public:
    /// What the user is asked for.
    enum class Asks {
        Period,
        Day,
        LastDay, ///< the last of the rateDays that a rate is taken from
    };
    static constexpr int rateDays = 90;

    virtual ~Report() = default;

    virtual QString title() const = 0;
    virtual Asks asks() const { return Asks::Period; }
    /// Ways to look at the same rows; the first is taken at the start. Empty when there is only one.
    virtual QStringList views() const { return {}; }
    /// Gives the last day with anything to report up to [TO]: where a report begins.
    virtual QString lastDayStatement() const;

    /// The statements of a period; forgets what was read before. The report lives longer than the figures.
    virtual std::vector<Figure> figures(const Period &period) = 0;
    /// What was read, in the view of that index. Where a number cannot be told, the remark says so.
    Sheet sheet(int view) const;

private:
    virtual Sheet makeSheet(int view) const = 0;
};

} // namespace statistics
