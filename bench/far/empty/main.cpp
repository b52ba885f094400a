#include <QApplication>
#include <QTimer>
#include <QWidget>

namespace {

class Window : public QWidget
{
protected:
    void paintEvent(QPaintEvent *) override { QTimer::singleShot(0, qApp, &QApplication::quit); }
};

} // namespace

/// An empty window, until it is painted: what no program with one can do without.
int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    Window window;
    window.resize(1024, 768);
    window.show();
    return QApplication::exec();
}
