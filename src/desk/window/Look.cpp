#include "desk/window/Look.h"

#include "platform/controls/Appearance.h"

#include <QLibraryInfo>
#include <QLocale>
#include <QPalette>
#include <QScreen>
#include <QStyle>
#include <QStyleFactory>
#include <QTextStream>
#include <QTranslator>

namespace desk {

void dressUp(QApplication &application)
{
    QApplication::setDesktopFileName(QStringLiteral("zelvo-desk")); // whose picture stands for the windows
    const QLocale korean(QLocale::Korean, QLocale::SouthKorea);
    QLocale::setDefault(korean);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QPalette palette = QApplication::palette();
    palette.setColor(QPalette::Highlight, controls::AccentColor);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::AlternateBase, QColor(0xF3, 0xF6, 0xF7));
    QApplication::setPalette(palette);

    controls::installKoreanFonts();
    QApplication::setFont(controls::deskFont());
    if (!controls::showsWonSign(QApplication::font()))
        QTextStream(stderr) << QStringLiteral(
            "desk: 원화 기호를 그리는 한글 글꼴이 없어 금액 앞에 빗금이 보입니다 (fonts-nanum).\n");

    auto *translator = new QTranslator(&application);
    if (translator->load(korean, QStringLiteral("qtbase"), QStringLiteral("_"),
                         QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(translator);
}

void resizeWithinScreen(QWidget &window, const QSize &wished)
{
    const int caption = window.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &window);
    window.resize(wished.boundedTo(window.screen()->availableSize() - QSize(0, caption)));
}

} // namespace desk
