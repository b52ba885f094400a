#pragma once

#include <QLabel>
#include <QPointer>
#include <QSplitter>
#include <QTreeWidget>
#include <QWidget>

/// The tab "통계": a tree of reports, the five and those of the clinic's own register, each of which is a component of its own
/// that draws itself into the right pane.
class StatisticsPane : public QWidget
{
    Q_OBJECT
public:
    explicit StatisticsPane(QWidget *parent = nullptr);

    /// Builds the tree anew and starts its first report; called on each visit of the tab.
    void showStatisticsTab();
    void buildStatisticsTree();
    /// Ends the report on show, which reads from the connection that is left: the next visit of the tab starts it anew, and
    /// the event loop at once where the tab is on show.
    void connectionChanged();

    QTreeWidget *tree() const { return treeStatItem_; }

private:
    QWidget *makeLeftPane();
    void addOwnReports();
    void showRemarks(const QStringList &remarks);
    void nodeClicked(QTreeWidgetItem *node);
    void startReport(const QString &programId);
    void hostWindow(qint32 handle);
    void destroyReportWindow();

    QSplitter *splitStatMain_;
    QTreeWidget *treeStatItem_;
    QLabel *remarks_; ///< on the register of the clinic's own reports
    QWidget *reportPane_;
    QPointer<QWidget>
        reportWindow_;          ///< the window on show, or what stands around one that is no widget of this process
    QString strCurrentStatTag_; ///< program identifier of the report on show
    qint32 lngStatWindow_ = 0;  ///< handle of its window, 0 for none; stale after a failed start
    bool starting_ = false;
};
