#pragma once

#include "platform/print/VSPrinter.h"

#include <QDialog>

namespace print {

/// The window of every preview: modal and as large as the screen. Made for one showing.
class Preview : public QDialog
{
    Q_OBJECT
public:
    explicit Preview(const QString &title, QWidget *owner = nullptr);

    VSPrinter *vsPrint() const { return vsPrint_; }

private:
    VSPrinter *vsPrint_;
};

} // namespace print
