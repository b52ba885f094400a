#include "components/central/ProgressWindow.h"

#include "platform/controls/Named.h"

#include <QApplication>
#include <QLocale>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>

namespace central {

namespace {

constexpr qint64 shownAfter = 400; // ms
constexpr qint64 many = 1'000;
constexpr int windowWidth = 420;

bool hasWindows()
{
    return qobject_cast<QApplication *>(QCoreApplication::instance()) != nullptr;
}

QString textFor(qint64 done, qint64 total)
{
    const QLocale korean(QLocale::Korean, QLocale::SouthKorea);
    if (done == 0)
        return QStringLiteral("본부에 연결하는 중입니다.");
    return total == 0 ? QStringLiteral("본부의 물품 목록을 가져오는 중입니다. %1건").arg(korean.toString(done))
                      : QStringLiteral("물품을 저장하는 중입니다. %1 / %2건")
                            .arg(korean.toString(done), korean.toString(total));
}

} // namespace

ProgressWindow::ProgressWindow()
{
    since_.start();
}

ProgressWindow::~ProgressWindow()
{
    delete window_;
}

void ProgressWindow::open()
{
    window_ = controls::named(new QWidget(nullptr, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint),
                              QStringLiteral("frmCentralProgress"));
    window_->setWindowTitle(QStringLiteral("물품 연동"));
    window_->setWindowModality(Qt::ApplicationModal);
    state_ = controls::named(new QLabel, QStringLiteral("lblCentralProgress"));
    state_->setMinimumWidth(state_->fontMetrics().horizontalAdvance(textFor(many * many - 1, 0)));
    bar_ = controls::named(new QProgressBar, QStringLiteral("prgCentral"));
    bar_->setAccessibleName(QStringLiteral("물품 연동 진행"));
    auto *column = new QVBoxLayout(window_);
    column->setContentsMargins(20, 16, 20, 18);
    column->setSpacing(10);
    column->addWidget(state_);
    column->addWidget(bar_);
    window_->setFixedWidth(std::max(windowWidth, column->sizeHint().width()));
    window_->show();
    // It is painted within a transaction later, where no event may run: it has to be on the screen by then.
    for (int turn = 0; turn < 20 && !window_->windowHandle()->isExposed(); ++turn)
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents, 10);
}

void ProgressWindow::breathe()
{
    if (!hasWindows())
        return;
    if (!window_ && since_.elapsed() > shownAfter) {
        open();
        paint(0, 0);
    }
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void ProgressWindow::show(qint64 done, qint64 total)
{
    if (!window_ && total == 0 && done > many && hasWindows())
        open();
    if (window_)
        paint(done, total);
}

void ProgressWindow::paint(qint64 done, qint64 total)
{
    state_->setText(textFor(done, total));
    bar_->setRange(0, int(total));
    bar_->setValue(int(done));
    window_->repaint();
}

} // namespace central
