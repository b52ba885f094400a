// The window on a dark desktop and to a screen reader.

#include "platform/controls/Palette.h"
#include "tests/support/SaleWindow.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QMap>
#include <QRadioButton>
#include <QTabWidget>

#include <functional>
#include <string>

namespace {

using controls::Scheme;

/// What a host may wear that has never heard of the table.
QPalette foreignDark()
{
    QPalette palette(QColor(0x31, 0x31, 0x31));
    palette.setColor(QPalette::Base, QColor(0x1B, 0x1B, 0x1B));
    return palette;
}

struct Roles
{
    QPalette::ColorRole text, back;
};

/// Where the style fills the control itself; a control without such a role stands on what lies beneath.
Roles rolesOf(const QWidget &widget)
{
    if (qobject_cast<const QPushButton *>(&widget))
        return {QPalette::ButtonText, QPalette::Button};
    const bool entry = qobject_cast<const QLineEdit *>(&widget) || qobject_cast<const QAbstractItemView *>(&widget)
                       || qobject_cast<const QPlainTextEdit *>(&widget) || qobject_cast<const QComboBox *>(&widget)
                       || qobject_cast<const QAbstractSpinBox *>(&widget);
    if (entry)
        return {QPalette::Text, QPalette::Base};
    const bool hasText = qobject_cast<const QLabel *>(&widget) || qobject_cast<const QAbstractButton *>(&widget)
                         || qobject_cast<const QGroupBox *>(&widget) || qobject_cast<const QTabWidget *>(&widget);
    return {hasText ? widget.foregroundRole() : QPalette::NoRole, QPalette::NoRole};
}

QColor backBelow(const QWidget *widget, QPalette::ColorGroup group)
{
    while (!widget->isWindow() && !widget->autoFillBackground())
        widget = widget->parentWidget();
    return widget->palette().color(group, widget->backgroundRole());
}

/// Pairs of text and background below 4.5 : 1 among the controls that are on the screen and can be used.
QStringList unreadable(const QWidget &window)
{
    QStringList found;
    const auto look = [&](const QWidget *widget, const QColor &text, const QColor &back, const char *what) {
        if (controls::contrast(text, back) < 4.5)
            found << widget->objectName() + u' ' + QLatin1String(what) + u' ' + text.name() + QStringLiteral(" on ")
                         + back.name();
    };
    const QList<QWidget *> widgets = window.findChildren<QWidget *>();
    for (const QWidget *widget : widgets) {
        const Roles roles = rolesOf(*widget);
        if (!widget->isVisible() || !widget->isEnabled() || roles.text == QPalette::NoRole)
            continue;
        for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
            const QPalette colors = widget->palette();
            const QColor back =
                roles.back == QPalette::NoRole ? backBelow(widget, group) : colors.color(group, roles.back);
            look(widget, colors.color(group, roles.text), back, "text");
            const auto *list = qobject_cast<const QAbstractItemView *>(widget);
            if (!list)
                continue;
            look(widget, colors.color(group, QPalette::Text), colors.color(group, QPalette::AlternateBase), "stripe");
            look(widget, colors.color(group, QPalette::HighlightedText), colors.color(group, QPalette::Highlight),
                 "selection");
        }
    }
    return found;
}

class EveryDesk : public SaleWindow
{
protected:
    EveryDesk()
    {
        product(QStringLiteral("경옥고"), 25500);
        runFile("sales/two-orders.sql");
        detail(1, 1, 25500, 500, -2);
    }
    ~EveryDesk() override
    {
        close();
        QApplication::setPalette(controls::deskPalette(Scheme::Light));
    }

    static QString spoken(const char *name, QAccessible::Text kind)
    {
        return QAccessible::queryAccessibleInterface(&at(name))->text(kind);
    }
};

} // namespace

TEST_F(EveryDesk, EachTextIsReadableOnADarkDesktopToo)
{
    const QPalette dark = controls::deskPalette(Scheme::Dark);
    const struct
    {
        const char *desktop;
        QPalette atStart, later;
    } cases[] = {
        {"light", controls::deskPalette(Scheme::Light), controls::deskPalette(Scheme::Light)},
        {"dark", dark, dark},
        {"turns dark", controls::deskPalette(Scheme::Light), dark},
        {"turns light", dark, controls::deskPalette(Scheme::Light)},
        {"a dark host's own", foreignDark(), foreignDark()},
        {"turns a dark host's own", QPalette(QColor(0xE0, 0xE0, 0xE0)), foreignDark()},
    };
    for (const auto &row : cases) {
        SCOPED_TRACE(row.desktop);
        close();
        QApplication::setPalette(row.atStart);
        sell();
        put("txtSaleProductLists_4", "-\\3");
        QApplication::setPalette(row.later);
        auto *tabs = window().findChild<QTabWidget *>();
        for (int tab = 0; tab < tabs->count(); ++tab) {
            tabs->setCurrentIndex(tab);
            EXPECT_EQ(unreadable(window()).join(u'\n').toStdString(), "") << "tab " << tab;
        }
        tabs->setCurrentIndex(0);
        push("chkCmdOrderMasterED_0");
        EXPECT_EQ(unreadable(window()).join(u'\n').toStdString(), "") << "in edit";
        push("chkcmdCSSaveInfo_1");
    }
    boxes_.take();
}

TEST_F(EveryDesk, EachControlHasANameOfItsOwnInItsTab)
{
    sell();
    auto *tabs = window().findChild<QTabWidget *>();
    for (int tab = 0; tab < tabs->count(); ++tab) {
        tabs->setCurrentIndex(tab);
        QMap<QString, QStringList> named;
        const QList<QWidget *> widgets = window().findChildren<QWidget *>();
        for (QWidget *widget : widgets) {
            const bool inTab = tabs->widget(tab)->isAncestorOf(widget) && widget->isVisibleTo(tabs->widget(tab));
            const bool works = qobject_cast<QAbstractButton *>(widget) || qobject_cast<QLineEdit *>(widget)
                               || qobject_cast<QComboBox *>(widget) || qobject_cast<QAbstractSpinBox *>(widget)
                               || qobject_cast<QAbstractItemView *>(widget) || qobject_cast<QPlainTextEdit *>(widget);
            if (inTab && works && !widget->objectName().isEmpty() && !widget->objectName().startsWith(u"qt_"))
                named[QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name)] << widget->objectName();
        }
        EXPECT_FALSE(named.isEmpty());
        for (auto each = named.cbegin(); each != named.cend(); ++each) {
            EXPECT_EQ(each.value().size(), 1)
                << each.key().toStdString() << ": " << each.value().join(u' ').toStdString();
            EXPECT_FALSE(each.key().trimmed().isEmpty() || each.key().endsWith(u':'))
                << each.key().toStdString() << ": " << each.value().join(u' ').toStdString();
        }
    }
    boxes_.take();
}

TEST_F(EveryDesk, AScreenReaderHearsMoneyAndTheColumnsThatAreShown)
{
    sell();
    const struct
    {
        const char *control;
        QAccessible::Text kind;
        const char *told;
    } cases[] = {
        {"txtSaleProductLists_2", QAccessible::Value, "25,500원"},
        {"txtSaleProductLists_5", QAccessible::Value, "1"},
        {"txtOrderMaster_9", QAccessible::Value, "3,000원"},
        {"cboPayMethod", QAccessible::Name, "결재방법"},
        {"chkCmdOrderMasterED_1", QAccessible::Name, "거래 삭제"},
        {"chkCmdDelOrderDetail", QAccessible::Name, "판매 내역 삭제"},
        {"chkcmdAddEditDelTran_2", QAccessible::Name, "수납 내역 삭제"},
    };
    for (const auto &row : cases)
        EXPECT_EQ(spoken(row.control, row.kind).toStdString(), row.told) << row.control;

    put("txtSaleProductLists_4", "-\\1,234");
    auto *box = QAccessible::queryAccessibleInterface(&at("txtSaleProductLists_4"))->textInterface();
    at<QLineEdit>("txtSaleProductLists_4").setSelection(2, 1);
    int start = 0;
    int end = 0;
    box->selection(0, &start, &end);
    EXPECT_EQ(box->text(0, box->characterCount()).toStdString(), "-1,234원");
    EXPECT_EQ(box->text(start, end).toStdString(), "1");

    QAccessibleInterface *lines = QAccessible::queryAccessibleInterface(&at("tdbCustSaleDetails"));
    const auto headsOf = [](QAccessibleInterface *list) {
        QStringList heads;
        for (int column = 0; column < list->tableInterface()->columnCount(); ++column)
            heads << list->tableInterface()->columnDescription(column);
        return heads;
    };
    const QStringList heads = headsOf(lines);
    EXPECT_EQ(heads.join(u' ').toStdString(), "물품명 수량 판매단가 단가할인 판매종류 환불정보");
    EXPECT_EQ(headsOf(QAccessible::queryAccessibleInterface(&at("tdbCustTranManage"))).join(u' ').toStdString(),
              "일자 방법 금액 결재방법 메모");
    QStringList all;
    for (int child = 0; child < lines->childCount(); ++child) {
        EXPECT_EQ(lines->indexOfChild(lines->child(child)), child);
        all << lines->child(child)->text(QAccessible::Name);
    }
    EXPECT_EQ(all.mid(heads.size()).join(u'|').toStdString(), "경옥고|-2|25,500원|500원|일반판매|");
    const QAccessibleInterface *current = lines->focusChild();
    ASSERT_TRUE(current);
    EXPECT_EQ(current->text(QAccessible::Name).toStdString(), "경옥고");
}
