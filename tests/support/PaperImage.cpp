#include "tests/support/PaperImage.h"

#include <QDir>
#include <QPainter>
#include <QProcess>
#include <QTemporaryDir>

#include <stdexcept>

namespace {

constexpr double dotsPerInch = 203;
constexpr double dotsPerMm = dotsPerInch / 25.4;
constexpr int blur = 2; ///< dots by which two programs may set a letter's edge apart

bool isInk(const QImage &image, int x, int y)
{
    return image.valid(x, y) && qGray(image.pixel(x, y)) < 128;
}

bool isInkNear(const QImage &image, int x, int y)
{
    for (int down = -blur; down <= blur; ++down) {
        for (int right = -blur; right <= blur; ++right) {
            if (isInk(image, x + right, y + down))
                return true;
        }
    }
    return false;
}

/// Share of the ink of `of` inside the box that `on` has as well.
double shareOfInk(const QImage &of, const QImage &on, const QRect &box)
{
    int all = 0;
    int found = 0;
    for (int y = box.top(); y <= box.bottom(); ++y) {
        for (int x = box.left(); x <= box.right(); ++x) {
            if (!isInk(of, x, y))
                continue;
            ++all;
            found += isInkNear(on, x, y);
        }
    }
    return all == 0 ? 0 : double(found) / all;
}

QImage drawn(const print::Page &page, const QSizeF &paper)
{
    QImage image((paper * dotsPerMm).toSize(), QImage::Format_Grayscale8);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::TextAntialiasing);
    print::drawPage(painter, page, dotsPerInch);
    return image;
}

} // namespace

QList<QImage> printedSheets(const QString &pdf, double edge)
{
    const int free = qRound(edge / 72 * dotsPerInch);
    const QTemporaryDir folder;
    QProcess reader;
    reader.start(QStringLiteral("pdftoppm"), {QStringLiteral("-r"), QString::number(dotsPerInch),
                                              QStringLiteral("-gray"), pdf, folder.filePath(QStringLiteral("sheet"))});
    if (!reader.waitForFinished(60'000) || reader.exitCode() != 0)
        throw std::runtime_error("pdftoppm: " + reader.readAllStandardError().toStdString());
    QList<QImage> sheets;
    for (const QString &name : QDir(folder.path()).entryList(QDir::Files, QDir::Name)) {
        const QImage reached(folder.filePath(name));
        QImage sheet(reached.size() + QSize(2 * free, 2 * free), QImage::Format_Grayscale8);
        sheet.fill(Qt::white);
        QPainter(&sheet).drawImage(free, free, reached);
        sheets << sheet;
    }
    return sheets;
}

QStringList textsMissingOn(const QList<QImage> &sheets, const print::Document &document)
{
    QStringList missing;
    for (int number = 0; number < document.pageCount(); ++number) {
        const print::Page &page = document.pages()[std::size_t(number)];
        const QImage expected = drawn(page, document.paper());
        for (const print::TextItem &text : page.texts) {
            const QRectF line(text.box.topLeft(), QSizeF(text.box.width(), print::lineHeight(text.font)));
            const QRect box = QRectF(line.topLeft() * dotsPerMm, line.size() * dotsPerMm).toAlignedRect();
            const double there = shareOfInk(expected, sheets.value(number), box);
            const double nothingElse = shareOfInk(sheets.value(number), expected, box);
            if (!text.text.trimmed().isEmpty() && (there < 0.95 || nothingElse < 0.8))
                missing << QStringLiteral("%1: %2").arg(number + 1).arg(text.text);
        }
    }
    return missing;
}
