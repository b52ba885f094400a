#pragma once

#include "components/frame/Figure.h"

#include <QByteArrayView>

namespace statistics {

/// Texts of rows in UTF-8, for longer than their rows are there.
class KeptTexts
{
public:
    /// The text of a cell; `known` where that says the same, as in many rows behind one another.
    QByteArrayView keep(QByteArrayView known, const Record &row, int column)
    {
        QByteArray room;
        const QUtf8StringView text = row.utf8(column, room);
        const QByteArrayView found(text.data(), text.size());
        return found == known ? known
                              : QByteArrayView(texts_.add(found.data(), std::size_t(found.size())), found.size());
    }

private:
    ado::TextBlocks texts_;
};

} // namespace statistics
