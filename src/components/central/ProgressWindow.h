#pragma once

#include <QElapsedTimer>
#include <QLabel>
#include <QPointer>
#include <QProgressBar>

namespace central {

/// Tells the user of a desk how far the products are; it comes when they take longer than a moment, or are many. A program
/// without windows has none. In a transaction it is painted, and nothing else of the program runs. Names: frmCentralProgress, lblCentralProgress, prgCentral.
class ProgressWindow
{
public:
    ProgressWindow();
    ~ProgressWindow();
    ProgressWindow(const ProgressWindow &) = delete;
    ProgressWindow &operator=(const ProgressWindow &) = delete;

    /// While a server is waited for, with no transaction open: the program's windows are painted.
    void breathe();
    void show(qint64 done, qint64 total);

private:
    void open();
    void paint(qint64 done, qint64 total);

    QElapsedTimer since_;
    QPointer<QWidget> window_;
    QPointer<QLabel> state_;
    QPointer<QProgressBar> bar_;
};

} // namespace central
