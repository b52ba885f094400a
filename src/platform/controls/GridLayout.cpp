#include "platform/controls/GridLayout.h"

#include "platform/runtime/RuntimeError.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

#include <algorithm>

namespace controls {

namespace {

const QString signature = QStringLiteral("zelvo-grid-layout-1");
constexpr int NarrowestColumn = 8;
constexpr int WidestColumn = 10'000;
constexpr qint64 LargestFile = 1 << 20;

std::optional<GridLayout::Place> readPlace(const QJsonObject &entry, const std::vector<GridColumn> &columns)
{
    const int column = entry.value(QLatin1String("column")).toInt(-1);
    const int width = entry.value(QLatin1String("width")).toInt(-1);
    if (column < 0 || column >= int(columns.size()) || width < NarrowestColumn || width > WidestColumn)
        return std::nullopt;
    const GridColumn &designed = columns[std::size_t(column)];
    if (entry.value(QLatin1String("field")).toString() != designed.field)
        return std::nullopt;
    return GridLayout::Place{column, width, designed.visible && entry.value(QLatin1String("visible")).toBool()};
}

/// Each column once, and one of them to be seen.
bool isWhole(const GridLayout &layout)
{
    std::vector<bool> seen(layout.places.size(), false);
    bool anyVisible = false;
    for (const GridLayout::Place &place : layout.places) {
        if (seen[std::size_t(place.column)])
            return false;
        seen[std::size_t(place.column)] = true;
        anyVisible = anyVisible || place.visible;
    }
    return anyVisible;
}

} // namespace

GridLayout designedLayout(const std::vector<GridColumn> &columns)
{
    GridLayout layout;
    for (std::size_t i = 0; i < columns.size(); ++i)
        layout.places.push_back({int(i), columns[i].width, columns[i].visible});
    return layout;
}

std::optional<GridLayout> readGridLayout(const QString &file, const QString &name,
                                         const std::vector<GridColumn> &columns)
{
    QFile stored(file);
    if (!stored.open(QIODevice::ReadOnly) || stored.size() > LargestFile)
        return std::nullopt;
    const QJsonObject root = QJsonDocument::fromJson(stored.readAll()).object();
    const QJsonArray entries = root.value(QLatin1String("columns")).toArray();
    if (root.value(QLatin1String("signature")).toString() != signature
        || root.value(QLatin1String("layout")).toString() != name || entries.size() != qsizetype(columns.size()))
        return std::nullopt;

    GridLayout layout;
    for (const QJsonValueConstRef entry : entries) {
        const std::optional<GridLayout::Place> place = readPlace(entry.toObject(), columns);
        if (!place)
            return std::nullopt;
        layout.places.push_back(*place);
    }
    return isWhole(layout) ? std::optional(layout) : std::nullopt;
}

void writeGridLayout(const QString &file, const QString &name, const std::vector<GridColumn> &columns,
                     const GridLayout &layout)
{
    QJsonArray entries;
    for (const GridLayout::Place &place : layout.places) {
        entries.append(QJsonObject{{QStringLiteral("column"), place.column},
                                   {QStringLiteral("field"), columns[std::size_t(place.column)].field},
                                   {QStringLiteral("width"), std::clamp(place.width, NarrowestColumn, WidestColumn)},
                                   {QStringLiteral("visible"), place.visible}});
    }
    const QJsonObject root{{QStringLiteral("signature"), signature},
                           {QStringLiteral("layout"), name},
                           {QStringLiteral("columns"), entries}};
    const QByteArray bytes = QJsonDocument(root).toJson();

    QSaveFile target(file);
    if (!target.open(QIODevice::WriteOnly) || target.write(bytes) != bytes.size() || !target.commit()) {
        throw runtime::RuntimeError(runtime::ErrorNumber::InvalidCall,
                                    QStringLiteral("그리드 레이아웃 파일을 저장하지 못했습니다.\n%1\n(%2)")
                                        .arg(QDir::toNativeSeparators(file), target.errorString()));
    }
}

} // namespace controls
