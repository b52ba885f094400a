#pragma once

#include "components/frame/ReadingWork.h"
#include "components/frame/Report.h"

#include <QComboBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSplitter>
#include <QWidget>

#include <algorithm>
#include <memory>

namespace statistics {

class CashCountBox;
class CustomerFind;
class PeriodBar;
class SavedLine;
class SheetChart;
class SheetView;
class SummaryBox;

/// The window of a report: the days asked for, a table over its totals, a chart; to be saved and printed. It reads in
/// slices from its own timer, from the first turn of the event loop on.
class ReportWindow : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(bool reading READ isReading)
public:
    ReportWindow(std::unique_ptr<Report> report, ado::ConnectionPtr connection, QWidget *parent = nullptr);
    ~ReportWindow() override;

    bool isReading() const { return !opened_ || work_.isRunning(); }
    const Sheet &sheet() const { return sheet_; }

private:
    QLayout *head();
    QLayout *choices();
    QLayout *state();
    void wire();
    void wireTable();
    int view() const { return std::max(0, cboView_->currentIndex()); }
    void open();
    void read();
    void done();
    void stopped(const QString &why);
    void showSheet();
    void showFound(int customer);
    void showBehind(int row, int column);
    void setBusy(bool busy);
    QString periodText() const;
    void saveCsv();
    void print();

    std::unique_ptr<Report> report_;
    ado::ConnectionPtr connection_;
    ReadingWork work_;
    bool opened_ = false;
    Period read_;     ///< what the sheet tells of
    int reading_ = 0; ///< of the view that was read
    Sheet sheet_;

    PeriodBar *periodBar_;
    QComboBox *cboView_;
    QPushButton *cmdRead_;
    QPushButton *cmdCsv_;
    QPushButton *cmdPrint_;
    QLabel *lblState_;
    SavedLine *saved_;
    QProgressBar *prgReading_;
    QPushButton *cmdCancel_;
    SummaryBox *summary_;
    CashCountBox *cashCount_;
    SheetView *table_;
    CustomerFind *find_;
    SheetChart *chart_;
    QSplitter *parts_;              ///< table over chart
    std::optional<bool> partedFor_; ///< whether for lying bars
};

} // namespace statistics
