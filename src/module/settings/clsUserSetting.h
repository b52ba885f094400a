#pragma once

#include <QString>
#include <QStringView>
#include <QVariant>

#include <span>

/// The settings of one machine and user that the clinic's programs share: values in the per-user store, addressed by
/// application, section and key. Every get reads the store once and every let writes it once; both may raise, and a missing
/// value is no error. This component itself only asks for the receipt printer.
class clsUserSetting
{
public:
    struct Property
    {
        const char16_t *name;
        const char16_t *section;
        const char16_t *key;
        const char16_t *defaultText = u"";
    };

    /// The shared vocabulary, in its order: general, the doctor's room, the reception. A key may stand in two sections.
    static std::span<const Property> properties();

    /// The stored text, or the default where nothing is stored. `property` is a name of the vocabulary; any other raises
    /// NoSuchMember. Numbers and flags are the reader's to convert.
    QString value(QStringView property) const;
    /// Stores the text form of the value.
    void setValue(QStringView property, const QVariant &value) const;

    /// Name of the roll printer; "<자동설정>" asks for the search among the installed ones.
    QString ReceiptPrinter() const { return value(u"ReceiptPrinter"); }
    void setReceiptPrinter(const QString &printer) const { setValue(u"ReceiptPrinter", printer); }
};
