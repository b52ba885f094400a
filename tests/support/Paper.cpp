#include "tests/support/Paper.h"

#include "platform/print/Printers.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QXmlStreamReader>

#include <algorithm>
#include <stdexcept>

namespace {

constexpr double mmPerPoint = 25.4 / 72;

double attribute(const QXmlStreamReader &xml, const char *name)
{
    return xml.attributes().value(QLatin1String(name)).toDouble() * mmPerPoint;
}

} // namespace

Paper::Paper(const QString &file)
{
    QProcess reader;
    reader.start(QStringLiteral("pdftotext"), {QStringLiteral("-bbox"), file, QStringLiteral("-")});
    if (!reader.waitForFinished(60'000) || reader.exitCode() != 0)
        throw std::runtime_error("pdftotext: " + reader.readAllStandardError().toStdString());
    QByteArray page = reader.readAllStandardOutput();
    page.remove(0, page.indexOf("<body>")); // the head is HTML with entities of its own
    page.truncate(page.indexOf("</body>") + 7);
    QXmlStreamReader xml(page);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("page")) {
            sheets_ << QSizeF(attribute(xml, "width"), attribute(xml, "height"));
        } else if (xml.name() == QLatin1String("word")) {
            const QRectF box(QPointF(attribute(xml, "xMin"), attribute(xml, "yMin")),
                             QPointF(attribute(xml, "xMax"), attribute(xml, "yMax")));
            words_ << Word{xml.readElementText(), int(sheets_.size()) - 1, box};
        }
    }
    if (xml.hasError())
        throw std::runtime_error("pdftotext: " + xml.errorString().toStdString());
}

Paper Paper::of(const print::Document &document)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath("paper.pdf");
    print::savePdf(document, file, QStringLiteral("paper"));
    return Paper(file);
}

Paper::Word Paper::word(const QString &text) const
{
    QList<Word> found;
    std::copy_if(words_.begin(), words_.end(), std::back_inserter(found),
                 [&](const Word &word) { return word.text == text; });
    if (found.size() != 1)
        throw std::runtime_error(std::to_string(found.size()) + " times on paper: " + text.toStdString());
    return found.first();
}

bool Paper::has(const QString &text) const
{
    return std::any_of(words_.begin(), words_.end(), [&](const Word &word) { return word.text == text; });
}

QString Paper::line(double middle, int page) const
{
    QList<Word> found;
    std::copy_if(words_.begin(), words_.end(), std::back_inserter(found),
                 [&](const Word &word) { return word.page == page && qAbs(word.box.center().y() - middle) < 1.5; });
    std::sort(found.begin(), found.end(), [](const Word &a, const Word &b) { return a.box.left() < b.box.left(); });
    QStringList texts;
    for (const Word &word : std::as_const(found))
        texts << word.text;
    return texts.join(QLatin1Char(' '));
}

QStringList Paper::overlaps() const
{
    QStringList pairs;
    for (auto a = words_.begin(); a != words_.end(); ++a) {
        for (auto b = a + 1; b != words_.end(); ++b) {
            // A word's box has room for accents above and tails below that these texts do not use.
            const QRectF common = a->box.adjusted(0, 0.8, 0, -0.8).intersected(b->box.adjusted(0, 0.8, 0, -0.8));
            if (a->page == b->page && common.width() > 0.3 && common.height() > 0.3)
                pairs << a->text + QStringLiteral(" / ") + b->text;
        }
    }
    return pairs;
}
