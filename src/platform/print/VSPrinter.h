#pragma once

#include "platform/print/Printers.h"

#include <QComboBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollArea>
#include <QWidget>

class QHBoxLayout;

namespace print {

class PageCanvas;

/// The preview of a document: one page at a time, paging, zoom, printing and saving as PDF, by mouse and keyboard. Nothing
/// is printed before the user asks for it. Many pages show how far they are and can be stopped: then nothing was printed.
class VSPrinter : public QWidget
{
    Q_OBJECT
public:
    explicit VSPrinter(QWidget *parent = nullptr);

    /// `fileName`: what a PDF is called that the user saves; empty: as the title.
    void setDocument(Document document, const QString &title, const QString &fileName = {});
    const Document &document() const { return document_; }
    /// Printer that is chosen at first; empty, or one that does not exist: the system's default.
    void setDevice(const QString &device) { device_ = device; }
    /// Tells the name of the paper that a printer had last; asked whenever one is chosen.
    void setPaperMemory(std::function<QString(const QString &printer)> paperOf) { paperOf_ = std::move(paperOf); }

    int currentPage() const { return page_; } ///< from 0
    void showPage(int page);                  ///< nearest one that exists
    double zoom() const { return zoom_; }     ///< 1: as large as on paper
    void setZoom(double zoom);                ///< kept between 25 % and 400 %

signals:
    void closeAsked();
    void pageShown(int page, int count); ///< from 1
    void printerChosen(const QString &printer);
    void paperChosen(const QString &printer, const QString &paper);
    void printed(const QString &printer);

protected:
    bool eventFilter(QObject *object, QEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    enum Command {
        Print,
        SavePdf,
        FirstPage,
        PreviousPage,
        NextPage,
        LastPage,
        ZoomOut,
        ZoomIn,
        FitWidth,
        FitPage,
        Close,
        CommandCount
    };

    QPushButton *makeButton(Command command);
    QHBoxLayout *makeOutputBar();
    QHBoxLayout *makeViewBar();
    QHBoxLayout *makeProgressBar();
    bool watched(const std::function<bool(const Progress &)> &work);
    void run(Command command);
    void printOut();
    void savePdf();
    void fillPrinters();
    void fillPapers();
    QString printer() const;
    void takePaperOfPrinter();
    void usePaper(int index);
    void fit(double widthMm, double heightMm);
    void showState();

    Document composed_;
    Document document_; ///< on the paper that is chosen
    QString title_;
    QString fileName_;
    QString device_;
    std::function<QString(const QString &)> paperOf_;
    int page_ = 0;
    double zoom_ = 1;
    QPushButton *buttons_[CommandCount] = {};
    QComboBox *cboPrinter_;
    QComboBox *cboPaper_;
    QLabel *lblPage_;
    QLabel *lblZoom_;
    QLabel *lblDone_;
    QScrollArea *scroll_;
    PageCanvas *canvas_;
    QProgressBar *progress_;
    QPushButton *cmdCancel_;
    bool stopped_ = false;
};

} // namespace print
