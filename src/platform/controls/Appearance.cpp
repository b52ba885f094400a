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

constexpr char groundMark[] = "ground";
constexpr char inkMark[] = "ink";

/// Back and text together, so that neither meets the other scheme's.
void paint(QWidget *control)
{
    const QVariant ground = control->property(groundMark);
    const QVariant inkOnIt = control->property(inkMark);
    const Ground usual = isEntryBox(control) ? Ground::Field : Ground::Face;
    const auto [back, own] = colors(ground.isValid() ? Ground(ground.toInt()) : usual);
    const QColor text = inkOnIt.isValid() && inkOnIt.toInt() != int(Ink::Plain) ? ink(Ink(inkOnIt.toInt())) : own;
    const bool button = qobject_cast<QPushButton *>(control);
    QPalette palette = control->palette();
    const auto [backRole, textRole] = rolesOf(control);
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        const bool disabled = group == QPalette::Disabled;
        if (disabled && (button || !ground.isValid()))
            continue; // looks like any other control out of use
        palette.setColor(group, backRole, back);
        palette.setColor(group, textRole, disabled ? disabledText() : text);
        // A list that cannot be typed into is drawn as a button.
        if (qobject_cast<QComboBox *>(control)) {
            palette.setColor(group, QPalette::Button, back);
            palette.setColor(group, QPalette::ButtonText, disabled ? disabledText() : text);
        }
    }
    control->setPalette(palette);
}

/// Once for a control, however often it is painted.
void keepPainted(QWidget *control)
{
    constexpr char followsMark[] = "followsColors";
    if (control->property(followsMark).toBool())
        return paint(control);
    control->setProperty(followsMark, true);
    followColors(control, [control] { paint(control); });
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

void setGround(QWidget *control, Ground ground)
{
    control->setProperty(groundMark, int(ground));
    keepPainted(control);
    // Boxes and buttons are filled by the style; check boxes, options and labels have no background of their own.
    if (!isEntryBox(control) && !qobject_cast<QPushButton *>(control))
        control->setAutoFillBackground(true);
}

QColor backColor(const QWidget *control)
{
    return control->palette().color(QPalette::Active, rolesOf(control).back);
}

void setInk(QWidget *control, Ink ink)
{
    if (control->property(inkMark).toInt() == int(ink))
        return;
    control->setProperty(inkMark, int(ink));
    keepPainted(control);
}

QColor foreColor(const QWidget *control)
{
    return control->palette().color(QPalette::Active, rolesOf(control).fore);
}

bool hasGround(const QWidget *control)
{
    return control->property(groundMark).isValid();
}

void followColors(QObject *owner, std::function<void()> paint)
{
    paint();
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED // the event instead of the signal would ask for a filter of all events
        QObject::connect(qGuiApp, &QGuiApplication::paletteChanged, owner, std::move(paint));
    QT_WARNING_POP
}

void dressList(QWidget *list)
{
    followColors(list, [list] {
        const auto [resting, text] = colors(Ground::RestingSelection);
        QPalette calm = list->palette();
        calm.setColor(QPalette::AlternateBase, colors(Ground::Stripe).back);
        calm.setColor(QPalette::Base, colors(Ground::Field).back);
        calm.setColor(QPalette::Text, colors(Ground::Field).text);
        calm.setColor(QPalette::Active, QPalette::Highlight, colors(Ground::Accent).back);
        calm.setColor(QPalette::Active, QPalette::HighlightedText, colors(Ground::Accent).text);
        calm.setColor(QPalette::Inactive, QPalette::Highlight, resting);
        calm.setColor(QPalette::Inactive, QPalette::HighlightedText, text);
        list->setPalette(calm);
    });
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
    image.fill(colors(Ground::Paper).back);
    QPainter painter(&image);
    painter.setPen(colors(Ground::Paper).text);
    painter.setFont(large);
    painter.drawText(image.rect(), Qt::AlignCenter, QStringLiteral("\\"));
    painter.end();
    return mostInkRuns(image) > 1;
}

} // namespace controls
