#include "platform/controls/Appearance.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QImage>
#include <QLineEdit>
#include <QPainter>
#include <QPalette>
#include <QPushButton>

namespace controls {

namespace {

/// The palette roles that carry a control's colours.
struct ColorRoles
{
    QPalette::ColorRole back;
    QPalette::ColorRole fore;
};

bool isEntryBox(const QWidget *control)
{
    return qobject_cast<const QLineEdit *>(control) || qobject_cast<const QComboBox *>(control)
           || qobject_cast<const QAbstractSpinBox *>(control) || qobject_cast<const QAbstractScrollArea *>(control);
}

ColorRoles rolesOf(const QWidget *control)
{
    if (isEntryBox(control))
        return {QPalette::Base, QPalette::Text};
    if (qobject_cast<const QPushButton *>(control))
        return {QPalette::Button, QPalette::ButtonText};
    return {control->backgroundRole(), QPalette::WindowText};
}

/// Most scan lines' ink runs: 1 for a slash, 4 for the won sign's W.
int mostInkRuns(const QImage &image)
{
    int most = 0;
    for (int y = 0; y < image.height(); ++y) {
        int runs = 0;
        bool inInk = false;
        for (int x = 0; x < image.width(); ++x) {
            const bool ink = qGray(image.pixel(x, y)) < 128;
            runs += ink && !inInk ? 1 : 0;
            inInk = ink;
        }
        most = qMax(most, runs);
    }
    return most;
}

} // namespace

QColor systemColor(SystemColor color)
{
    const QPalette desk = QGuiApplication::palette();
    switch (color) {
    case SystemColor::Window:
        return Qt::white;
    case SystemColor::InactiveBorder:
        return QColor(0xE4, 0xE7, 0xEB);
    case SystemColor::InfoBackground:
        return QColor(0xFF, 0xFF, 0xE1);
    // A palette does not tell the colours of captions; they go with those of what is selected.
    case SystemColor::ActiveCaption:
        return desk.color(QPalette::Active, QPalette::Highlight);
    case SystemColor::CaptionText:
        return desk.color(QPalette::Active, QPalette::HighlightedText);
    case SystemColor::ButtonText:
        return desk.color(QPalette::ButtonText);
    case SystemColor::ButtonFace:
        break;
    }
    return desk.color(QPalette::Window);
}

void setBackColor(QWidget *control, const QColor &color)
{
    QPalette palette = control->palette();
    palette.setColor(rolesOf(control).back, color);
    // A list that cannot be typed into is drawn as a button.
    if (qobject_cast<QComboBox *>(control))
        palette.setColor(QPalette::Button, color);
    control->setPalette(palette);
    // Boxes and buttons are filled by the style; check boxes, options and labels have no background of their own.
    if (!isEntryBox(control) && !qobject_cast<QPushButton *>(control))
        control->setAutoFillBackground(true);
}

QColor backColor(const QWidget *control)
{
    return control->palette().color(QPalette::Active, rolesOf(control).back);
}

void setForeColor(QWidget *control, const QColor &color)
{
    // The disabled group keeps its grey: a pane out of reach is told from an open one by its texts too.
    QPalette palette = control->palette();
    const QPalette::ColorRole role = rolesOf(control).fore;
    palette.setColor(QPalette::Active, role, color);
    palette.setColor(QPalette::Inactive, role, color);
    control->setPalette(palette);
}

QColor foreColor(const QWidget *control)
{
    return control->palette().color(QPalette::Active, rolesOf(control).fore);
}

void installKoreanFonts()
{
    static const bool installed = [] {
        const QStringList present = QFontDatabase::families();
        for (const char16_t *name :
             {u"맑은 고딕", u"Malgun Gothic", u"굴림", u"Gulim", u"굴림체", u"GulimChe", u"돋움", u"Dotum"}) {
            const QString family = QString::fromUtf16(name);
            if (!present.contains(family))
                QFont::insertSubstitution(family, QStringLiteral("NanumBarunGothic"));
        }
        return true;
    }();
    Q_UNUSED(installed);
}

QFont deskFont()
{
    return QFont(QStringLiteral("맑은 고딕"), 9);
}

bool showsWonSign(const QFont &font)
{
    constexpr int side = 96;
    QFont large(font);
    large.setPixelSize(side / 2);
    QImage image(side, side, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setFont(large);
    painter.drawText(image.rect(), Qt::AlignCenter, QStringLiteral("\\"));
    painter.end();
    return mostInkRuns(image) > 1;
}

} // namespace controls
