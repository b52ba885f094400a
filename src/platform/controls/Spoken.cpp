#include "platform/controls/Spoken.h"

#include "platform/controls/ComboSpoken.h"
#include "platform/controls/GridSpoken.h"
#include "platform/controls/MoneySpoken.h"
#include "platform/controls/RecordsetGrid.h"

#include <algorithm>

namespace controls {

namespace {

constexpr char moneyMark[] = "speaksMoney";

bool isDigits(QStringView text)
{
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](QChar character) {
        return character.isDigit() || character == u',' || character == u'.';
    });
}

QString spokenAmount(const QString &shown)
{
    return isDigits(shown.startsWith(u'-') ? QStringView(shown).mid(1) : shown) ? shown + u'원' : spokenMoney(shown);
}

class FigureSpoken : public QAccessibleWidget
{
public:
    explicit FigureSpoken(QLabel *figure)
        : QAccessibleWidget(figure, QAccessible::StaticText)
    {
    }
    QString text(QAccessible::Text kind) const override
    {
        const QString own = QAccessibleWidget::text(kind);
        return kind == QAccessible::Name ? own + u' ' + spokenAmount(static_cast<QLabel *>(object())->text()) : own;
    }
};

/// Asked for each class that the object is of, the latest first.
QAccessibleInterface *spokenControl(const QString &className, QObject *object)
{
    if (auto *grid = qobject_cast<RecordsetGrid *>(object))
        return new GridSpoken(grid);
    auto *combo = qobject_cast<QComboBox *>(object);
    if (combo && !combo->accessibleName().isEmpty())
        return new ComboSpoken(combo);
    auto *box = qobject_cast<QLineEdit *>(object);
    if (box && className == QLatin1String("QLineEdit") && box->property(moneyMark).isValid())
        return new MoneySpoken(box);
    auto *figure = qobject_cast<QLabel *>(object);
    if (figure && className == QLatin1String("QLabel") && figure->property(moneyMark).isValid())
        return new FigureSpoken(figure);
    return nullptr;
}

} // namespace

QString spokenMoney(const QString &shown)
{
    const qsizetype sign = shown.indexOf(u'\\');
    const bool leads = sign == 0 || (sign == 1 && shown.startsWith(u'-'));
    const QStringView digits = QStringView(shown).mid(sign + 1);
    return leads && isDigits(digits) ? shown.first(sign) + digits.toString() + u'원' : shown;
}

QString spokenName(const QString &caption)
{
    QString name = caption.trimmed();
    while (name.endsWith(u':') || name.endsWith(u' '))
        name.chop(1);
    return name;
}

void speakMoney(QLineEdit *box, Amounts amounts)
{
    installSpokenControls();
    box->setProperty(moneyMark, int(amounts));
}

void speakMoney(QLabel *figure)
{
    installSpokenControls();
    figure->setProperty(moneyMark, int(Amounts::Bare));
}

QString spokenText(const QLineEdit &box)
{
    const bool bare = box.property(moneyMark).toInt() == int(Amounts::Bare);
    return bare ? spokenAmount(box.displayText()) : spokenMoney(box.displayText());
}

void installSpokenControls()
{
    static const bool installed = [] {
        QAccessible::installFactory(spokenControl);
        return true;
    }();
    Q_UNUSED(installed);
}

} // namespace controls
