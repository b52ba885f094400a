#pragma once

#include "platform/print/Document.h"

#include <QWidget>

namespace print {

/// One page of a document on the screen, white on grey, at a zoom of screen dots per millimetre.
class PageCanvas : public QWidget
{
    Q_OBJECT
public:
    explicit PageCanvas(QWidget *parent = nullptr);

    /// The document must outlive its showing.
    void setPage(const Document &document, int page, double zoom);
    /// Screen dots of an inch at zoom 1.
    double dotsPerInch() const;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const Document *document_ = nullptr;
    int page_ = 0;
    double zoom_ = 1;
};

} // namespace print
