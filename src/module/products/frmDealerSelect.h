#pragma once

#include "platform/ado/Recordset.h"
#include "platform/controls/PushCheck.h"
#include "platform/controls/RecordsetGrid.h"

#include <QDialog>
#include <QLineEdit>
#include <QPushButton>

/// "거래처 선택": picks a dealer and reports it by an event. Made for one showing.
class frmDealerSelect : public QDialog
{
    Q_OBJECT
public:
    enum ShowMode : qint16 { Modeless = 0, Modal = 1 };

    explicit frmDealerSelect(QWidget *owner = nullptr);
    ~frmDealerSelect() override;

    /// Lists the dealers and shows the dialog beside the calling control, wholly on the screen. With Modal it returns when
    /// the dialog is gone. 1 for shown, -1 when the first search failed: nothing was shown then. The control stands in for
    /// its window handle: a control that is given one of its own takes the focus from the dialog on some desktops.
    ///
    /// An empty start text lists all dealers. Quirk (docs/architecture.md): any other lists those whose name holds one
    /// of the letters C, P, N, A, M and E, whatever the text is.
    qint16 SelectDealer(const ado::ConnectionPtr &connection, qint16 intShowMode, const QString &strStart,
                        QWidget *frmOwner, const QWidget &hWnd);
    /// The box of a search that failed, with its reason.
    void tellFailure();

signals:
    /// A dealer was chosen; the dialog closes.
    void evtDealerSelected(qint32 lngCMPK, const QString &strName);

protected:
    void showEvent(QShowEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void createControls();
    void layOutControls();
    void connectControls();

    bool refreshDealerGrid(const QString &text, bool rebind = true);
    void findDealer();
    void choose();
    void placeBeside(const QWidget &hWnd);

    bool keyPressed(const QWidget *control, const QKeyEvent &event);
    bool nameKeyPressed(const QKeyEvent &event);

    ado::ConnectionPtr connection_;
    std::unique_ptr<ado::Recordset> rsDealer_;
    QString failure_;

    QLineEdit *txtDealerName_ = nullptr;
    controls::PushCheck *chkcmdFindDealer_ = nullptr;
    controls::RecordsetGrid *tdbDealerSelect_ = nullptr;
    QPushButton *cmdOk_ = nullptr;
    QPushButton *cmdCancel_ = nullptr;
};
