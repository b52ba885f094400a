#pragma once

#include "platform/print/Document.h"

#include <QList>
#include <QRectF>
#include <QString>
#include <QStringList>

/// What stands on a printed page, read back from a PDF by another program than the one that wrote it.
class Paper
{
public:
    // page: from 0; box: mm
    struct Word
    {
        QString text;
        int page;
        QRectF box;
    };

    /// Reads a PDF file. Raises std::runtime_error when it is none.
    explicit Paper(const QString &file);
    /// Saves the document as a PDF and reads that.
    static Paper of(const print::Document &document);

    const QList<QSizeF> &sheets() const { return sheets_; } ///< mm
    const QList<Word> &words() const { return words_; }
    /// The only word of this text; raises std::runtime_error when there is none or more than one.
    Word word(const QString &text) const;
    bool has(const QString &text) const;
    /// Words whose middle is within 1.5 mm of this height, from left to right, with single blanks.
    QString line(double middle, int page = 0) const;
    /// Pairs of words that lie on one another by more than 0.3 mm both ways.
    QStringList overlaps() const;

private:
    QList<QSizeF> sheets_;
    QList<Word> words_;
};
