#pragma once

#include "components/frame/Report.h"
#include "platform/controls/DateEdit.h"

#include <QTimer>
#include <QWidget>

class QBoxLayout;

namespace statistics {

/// The days that a report is asked for: two dates (or one) and buttons for the usual ones.
class PeriodBar : public QWidget
{
    Q_OBJECT
public:
    explicit PeriodBar(Report::Asks asks, QWidget *parent = nullptr);

    Period period() const;
    /// Shows the period without raising chosen().
    void show(const Period &period);
    /// Shows it and raises chosen().
    void choose(const Period &period);

signals:
    /// Once for a choice; typed dates only after a short rest.
    void chosen();

private:
    void addButtons(QBoxLayout *layout);

    Report::Asks asks_;
    controls::DateEdit *dtpFirst_;
    controls::DateEdit *dtpLast_; ///< null where one day is asked for
    QTimer typed_;
};

} // namespace statistics
