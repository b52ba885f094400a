#include "fuzz/Fuzz.h"
#include "platform/registry/AppSettings.h"
#include "platform/runtime/RuntimeError.h"
#include "settings/clsFormSizePosSetting.h"
#include "settings/modFormLocate.h"

#include <QFile>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

/// A store file of any content, as another program or a broken disk leaves it.
void readBrokenStore(const QByteArray &bytes)
{
    QFile store(QStringLiteral("broken.ini"));
    demand(store.open(QIODevice::WriteOnly) && store.write(bytes) == bytes.size(), "the file is written");
    store.close();
    registry::GetSetting(QStringLiteral("broken"), QStringLiteral("젤보 데스크"), QStringLiteral("x"),
                         QStringLiteral("default"));
}

/// A window takes its place from any texts.
void placeWindow(QByteArray bytes)
{
    static QWidget window;
    static QSplitter columns;
    if (columns.count() == 0) {
        for (int column = 0; column < 3; ++column)
            columns.addWidget(new QWidget);
        (new QVBoxLayout(&window))
            ->addWidget(new QPushButton(QStringLiteral("저장"))); // as every window, it has a least size
        window.resize(900, 600);
        columns.resize(900, 300);
    }
    clsFormSizePosSetting setting;
    setting.FormPos_x(takeText(bytes));
    setting.FormPos_y(takeText(bytes));
    setting.FormWidth(takeText(bytes));
    setting.FormHeight(takeText(bytes));
    setting.FirstColWidth(takeText(bytes));
    setting.SecondColWidth(takeText(bytes));
    setting.ThirdColWidth(takeText(bytes));
    setting.FormIsMaximized(takeText(bytes));
    restoreMainWindowLayout(window, columns);
    demand(window.width() > 0 && window.height() > 0, "the window can be seen");
}

} // namespace

void fuzz(const QByteArray &given)
{
    registry::setStoreFolder(QStringLiteral("."));
    readBrokenStore(given);
    placeWindow(given);
    QByteArray bytes = given;
    const QString section = takeText(bytes);
    const QString key = takeText(bytes);
    const QString value = QString::fromUtf8(bytes);
    try {
        registry::SaveSetting(QStringLiteral("desk"), section, key, value);
    } catch (const runtime::RuntimeError &error) {
        demand(!error.description().isEmpty(), "an error tells something");
        return;
    }
    demand(registry::GetSetting(QStringLiteral("desk"), section, key, QStringLiteral("default")) == value,
           "a value reads back");
    QFile::remove(QStringLiteral("desk.ini"));
}
