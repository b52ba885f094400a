#include "clinic/Tables.h"
#include "platform/controls/Appearance.h"

#include <QApplication>
#include <QStyleFactory>

#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    controls::installKoreanFonts();
    QApplication::setFont(controls::deskFont());
    clinic::registerTables();
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
