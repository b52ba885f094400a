#pragma once

#include "platform/controls/RecordsetGrid.h"

#include <QString>

#include <optional>
#include <vector>

namespace controls {

/// A user's column layout: the columns in the order they stand in.
struct GridLayout
{
    struct Place
    {
        int column; ///< index as designed
        int width;  ///< pixels at 96 dpi
        bool visible;
    };
    std::vector<Place> places;
};

GridLayout designedLayout(const std::vector<GridColumn> &columns);

/// The layout of that name for these columns; nothing when the file is missing, damaged, or another program's or grid's.
std::optional<GridLayout> readGridLayout(const QString &file, const QString &name,
                                         const std::vector<GridColumn> &columns);

/// Raises RuntimeError when the file cannot be written; an older file then stays whole.
void writeGridLayout(const QString &file, const QString &name, const std::vector<GridColumn> &columns,
                     const GridLayout &layout);

} // namespace controls
