#include "settings/GridLayouts.h"

#include "platform/controls/EventEdge.h"
#include "platform/controls/MessageBox.h"
#include "platform/runtime/ProgramFolder.h"
#include "platform/runtime/RuntimeError.h"

#include <QFile>

#include <algorithm>

namespace {

struct LayoutPlace
{
    const char *grid;
    const char *file; ///< one is misspelt; on the desks it is called so
    const char *layoutName;
};

constexpr LayoutPlace layoutPlaces[] = {
    {"tdbSaleProductLists", "Grid.SaleProductListsLayoutFile.tdb", "SALEPRODUCTLISTS"},
    {"tdbCustSaleMaster", "Grid.CustSaleMasterLayoutFile.tdb", "CUSTSALEMASTER"},
    {"tdbCustSaleDetails", "Grid.CustSaleDetailsLayoutFile.tdb", "CUSTSALEDETAILS"},
    {"tdbCustTranManage", "Grid.CustTranManageLayourFile.tdb", "CUSTTRANMANAGE"},
};

const LayoutPlace *placeOf(const controls::RecordsetGrid &grid)
{
    const auto found = std::find_if(std::begin(layoutPlaces), std::end(layoutPlaces), [&](const LayoutPlace &place) {
        return grid.objectName() == QLatin1String(place.grid);
    });
    return found == std::end(layoutPlaces) ? nullptr : found;
}

QString pathOf(const LayoutPlace &place)
{
    return runtime::programFolder() + QLatin1String(place.file);
}

void deleteFile(const QString &path)
{
    if (!QFile::remove(path))
        throw runtime::RuntimeError(runtime::ErrorNumber::FileNotFound,
                                    QStringLiteral("파일을 삭제할 수 없습니다: ") + path);
}

} // namespace

void keepGridLayout(controls::RecordsetGrid &grid)
{
    const LayoutPlace *place = placeOf(grid);
    if (!place)
        return;
    const QString layoutName = QLatin1String(place->layoutName);
    if (QFile::exists(pathOf(*place)))
        grid.loadLayout(pathOf(*place), layoutName);
    controls::onEvent(&grid, &controls::RecordsetGrid::layoutChanged, &grid, [&grid, place, layoutName](bool byUser) {
        if (byUser)
            grid.saveLayout(pathOf(*place), layoutName);
    });
}

void resetGridLayouts(const QList<controls::RecordsetGrid *> &grids)
{
    using namespace controls;
    if (MsgBox(QStringLiteral("그리드 레이아웃을 리셋하시겠습니까?"), YesNo) != Answer::Yes)
        return;
    for (const RecordsetGrid *grid : grids) {
        const LayoutPlace *place = placeOf(*grid);
        if (place && QFile::exists(pathOf(*place)))
            deleteFile(pathOf(*place));
    }
    // The grids keep what they show: the designed columns come back with the next start.
    MsgBox(QStringLiteral("리셋된 레이아웃 적용을 하기위해 프로그램을 재시작 하십시오."), InformationIcon,
           QStringLiteral("프로그램 재시작"));
}
