#pragma once

#include "components/frame/OrderList.h"
#include "components/frame/ReadingWork.h"

#include <QDialog>
#include <QLabel>
#include <QProgressBar>

namespace statistics {

class SheetView;

/// Shows the orders behind a figure, to be read only. Esc closes it, while it reads too.
class OrdersWindow : public QDialog
{
    Q_OBJECT
public:
    OrdersWindow(QWidget *parent, Behind behind, ado::ConnectionPtr connection);

    bool isReading() const { return work_.isRunning(); }

private:
    void wire();
    void read(std::vector<Figure> figures);
    void showRead();

    OrderList list_;
    ado::ConnectionPtr connection_;
    ReadingWork work_;
    bool hasDetails_ = false;

    SheetView *table_;
    QLabel *lblState_;
    QProgressBar *prgReading_;
};

} // namespace statistics
