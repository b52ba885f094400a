#pragma once

#include "components/frame/Behind.h"
#include "components/frame/Figure.h"
#include "components/frame/Period.h"
#include "components/frame/Sheet.h"
#include "platform/runtime/SearchText.h"

#include <QStringList>

#include <optional>
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
    /// Views of the same number show the same figures; those of another one are read when the view is chosen.
    virtual int readingOf(int) const { return 0; }
    virtual std::vector<Figure> figuresOf(int /*view*/, const Period &period) { return figures(period); }

    /// The customers of a view, in which one can be looked for; nothing where it has none.
    virtual bool hasCustomers(int) const { return false; }
    virtual runtime::SearchTexts customers() const { return {}; }
    /// Gives the customer of that place a row, none where it is below zero; which row.
    virtual int setOut(int) { return -1; }

    virtual bool tellsOrders() const { return false; }
    /// The orders behind the figure in that row of the sheet, the totals where it is below zero. A column that bears no
    /// figure stands for the row's result.
    virtual std::optional<Behind> behind(int /*view*/, int /*row*/, int /*column*/) const { return {}; }
    /// What was read, in the view of that index. Where a number cannot be told, the remark says so.
    Sheet sheet(int view) const;

private:
    virtual Sheet makeSheet(int view) const = 0;
};

} // namespace statistics
