#pragma once

#include <QDir>
#include <QProcess>
#include <QString>

#include <memory>
#include <vector>

/// A printing system for the time of one test program: a server on a socket of its own with an A4 page printer and an 80 mm
/// roll printer, whose jobs become files.
class PrintServer
{
public:
    /// A printer as its description tells it; points.
    struct Queue
    {
        QString name;
        int width;
        std::vector<int> lengths; ///< of its sheets, the default one first
        int edge = 0;             ///< at every side, where nothing is printed
        int longest = 0;          ///< any length up to this one; 0: only those above
        bool raster = false;      ///< the job is what the system's own filters made of it, 203 dots to the inch
    };

    /// Sends the program's print calls to a place where only this server will answer. The printing library reads where to
    /// go once: to be called before anything asks it for printers.
    static bool keepApart();

    PrintServer();
    ~PrintServer();
    PrintServer(const PrintServer &) = delete;
    PrintServer &operator=(const PrintServer &) = delete;

    inline static const QString pagePrinter = QStringLiteral("Page_A4");
    inline static const QString rollPrinter = QStringLiteral("EPSON_TM-T88II_Partial_cut");

    /// The job that a printer was sent, as a file; waits for it. Raises std::runtime_error when none comes.
    QString job(const QString &printer) const;
    void add(const Queue &queue);
    void remove(const QString &printer);

private:
    void configure();
    void start();
    void admin(const QStringList &arguments) const;
    QString file(const QString &name) const { return folder_.filePath(name); }

    QDir folder_;
    std::unique_ptr<QProcess> server_;
};
