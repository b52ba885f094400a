#include "desk/window/Look.h"

#include "platform/controls/Appearance.h"
#include "platform/controls/DeskStyle.h"

#include <QEvent>
#include <QLibraryInfo>
#include <QLocale>
#include <QScopedValueRollback>
#include <QScreen>
#include <QTextStream>
#include <QTranslator>

namespace desk {

namespace {

/// Dark where the desktop is, in colours of ours.
void followDesktop()
{
    QApplication::setPalette(QPalette()); // what the desktop says
    QApplication::setPalette(controls::deskPalette(controls::scheme()));
}

/// Each window hears that the desktop has turned dark or light.
class DesktopTurns : public QObject
{
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (event->type() == QEvent::ThemeChange && object->isWindowType() && !turning_) {
            const QScopedValueRollback guard(turning_, true);
            followDesktop();
        }
        return QObject::eventFilter(object, event);
    }

private:
    bool turning_ = false;
};

} // namespace

void dressUp(QApplication &application)
{
    QApplication::setDesktopFileName(QStringLiteral("zelvo-desk")); // whose picture stands for the windows
    const QLocale korean(QLocale::Korean, QLocale::SouthKorea);
    QLocale::setDefault(korean);
    QApplication::setStyle(new controls::DeskStyle);
    followDesktop();
    application.installEventFilter(new DesktopTurns(&application));

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
