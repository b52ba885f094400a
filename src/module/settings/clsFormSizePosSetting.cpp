#include "settings/clsFormSizePosSetting.h"

#include "platform/registry/AppSettings.h"

namespace {

const QString application = QStringLiteral("Zelvo Desk");
const QString section = QStringLiteral("물품판매관리");

// In the order of the properties.
constexpr const char *keyNames[] = {
    "RowHeight_0", "RowHeight_1", "RowHeight_2", "ColWidth_0", "ColWidth_1",      "ColWidth_2",
    "FormPos_x",   "FormPos_y",   "FormHeight",  "FormWidth",  "IsFormMaximized",
};

} // namespace

clsFormSizePosSetting::clsFormSizePosSetting(QObject *parent)
    : QObject(parent)
{
}

QString clsFormSizePosSetting::stored(Key key)
{
    return registry::GetSetting(application, section, QLatin1String(keyNames[int(key)]));
}

void clsFormSizePosSetting::store(Key key, const QString &value)
{
    registry::SaveSetting(application, section, QLatin1String(keyNames[int(key)]), value);
}
