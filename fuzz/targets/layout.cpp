#include "fuzz/Fuzz.h"
#include "platform/controls/GridLayout.h"

#include <QFile>

#include <set>

// A layout file of any content gives a layout that a grid can show, or none.
void fuzz(const QByteArray &bytes)
{
    using controls::GridColumn;
    static const std::vector<GridColumn> columns{
        {.field = QStringLiteral("OrdM_PK"), .caption = QStringLiteral("번호"), .visible = false},
        {.field = QStringLiteral("OrdM_Date"), .caption = QStringLiteral("거래일자")},
        {.field = QStringLiteral("OrdM_Total"), .caption = QStringLiteral("판매총액")},
    };
    const QString name = QStringLiteral("CUSTSALEMASTER");
    const QString file = QStringLiteral("layout.tdb");
    QFile stored(file);
    demand(stored.open(QIODevice::WriteOnly) && stored.write(bytes) == bytes.size(), "the file is written");
    stored.close();
    const std::optional<controls::GridLayout> layout = controls::readGridLayout(file, name, columns);
    if (!layout)
        return;
    std::set<int> seen;
    for (const controls::GridLayout::Place &place : layout->places) {
        demand(place.column >= 0 && place.column < int(columns.size()) && seen.insert(place.column).second,
               "each column once");
        demand(place.width > 0 && place.width <= 10'000, "a width that can be shown");
        demand(!place.visible || columns[std::size_t(place.column)].visible, "a hidden key stays hidden");
    }
    demand(seen.size() == columns.size(), "every column");
    controls::writeGridLayout(file, name, columns, *layout);
    const std::optional<controls::GridLayout> again = controls::readGridLayout(file, name, columns);
    demand(again && again->places.size() == layout->places.size(), "what was written is read");
}
