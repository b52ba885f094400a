#pragma once

#include "platform/ado/Recordset.h"
#include "platform/runtime/SearchText.h"

#include <QStringList>

#include <functional>
#include <vector>

namespace ado {
class CellTable;
}

namespace controls {

/// Which rows of a recordset have a text in them. The texts are read when the first search asks for them, or before.
class RowSearch
{
public:
    /// One plain reading of all rows: the key first, then the texts.
    using Reading = std::function<ado::CellTable()>;

    /// `reading`: for a recordset that reads its rows one by one, when they are shown; without it the fields are asked for.
    RowSearch(QStringList fields, Reading reading);

    bool isReady() const { return ready_; }
    /// Reads the texts where that is still to be done. Raises what reading raises.
    void prepare(const ado::Recordset &rows);
    /// The rows came anew.
    void forget();
    /// Row numbers, ascending, as they stood when it was prepared.
    std::vector<int> find(const QString &typed) const { return texts_.find(typed); }

private:
    void takeFields(const ado::Recordset &rows);
    void takeReading(const ado::Recordset &rows);

    QStringList fields_;
    Reading reading_;
    runtime::SearchTexts texts_;
    bool ready_ = false;
};

} // namespace controls
