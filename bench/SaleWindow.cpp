#include "bench/SaleWindow.h"

#include "entry/clsZelvoProductSale.h"
#include "entry/frmMain.h"

#include <QApplication>
#include <QEvent>
#include <QWindow>

namespace bench {

namespace {

/// Whether anything was painted while it lived.
class PaintWatch : public QObject
{
public:
    PaintWatch() { qApp->installEventFilter(this); }
    bool painted() const { return painted_; }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        painted_ = painted_ || event->type() == QEvent::Paint;
        return false;
    }

private:
    bool painted_ = false;
};

} // namespace

void untilPainted()
{
    bool painted = true;
    while (painted) {
        const PaintWatch watch;
        QApplication::processEvents();
        painted = watch.painted();
    }
}

void SaleWindow::open(const desk::Patient &patient)
{
    clsZelvoProductSale().showProductSale(connection_, patient.key, patient.name, patient.chartNumber, patient.male,
                                          patient.birth, patient.zipCode, patient.address, patient.phone, patient.cell,
                                          patient.vip);
    window_ = frmMain::existing();
    untilPainted();
    if (!window_ || !window_->windowHandle() || !window_->windowHandle()->isExposed())
        throw std::runtime_error("the sale window does not show");
}

void SaleWindow::close()
{
    if (window_)
        window_->close();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    untilPainted();
}

} // namespace bench
