#include "clinic/Tables.h"
#include "platform/controls/Appearance.h"
#include "platform/controls/DeskStyle.h"

#include <QApplication>
#include <QTemporaryDir>

#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    // Nothing of the user's is read or written, and nothing of a test program that runs at the same time.
    const QTemporaryDir own;
    for (const char *place : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_RUNTIME_DIR"})
        qputenv(place, own.path().toLocal8Bit());
    QApplication application(argc, argv);
    QApplication::setStyle(new controls::DeskStyle);
    QApplication::setPalette(controls::deskPalette(controls::Scheme::Light));
    controls::installKoreanFonts();
    QApplication::setFont(controls::deskFont());
    clinic::registerTables();
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
