#include "tests/entry/EntryDesk.h"

#include "forms/PaneContract.h"
#include "platform/controls/Appearance.h"

#include <QPlainTextEdit>

namespace {

/// The names that a line of the file gives.
QStringList named(const QString &what)
{
    static const QStringList lines = textOf("entry/edit-modes.txt").split(u'\n');
    for (const QString &line : lines) {
        if (line.startsWith(what + QStringLiteral(": ")))
            return line.mid(what.size() + 2).split(u' ');
    }
    throw std::runtime_error("no line of " + what.toStdString());
}

constexpr const char *codes[] = {"00", "02", "10", "11", "12"};

class EditModes : public EntryDesk
{
protected:
    EditModes()
    {
        sell();
        members_ = named("sale entry") + named("never open");
        for (const char *code : codes)
            members_ += named(QLatin1String(code) + QStringLiteral(" group"));
    }

    static PaneShell &shell() { return dynamic_cast<PaneShell &>(*window()); }

    /// Names of the list for which the question is answered with yes, in the list's order.
    static std::string those(const QStringList &names, bool (*question)(const QWidget *))
    {
        QStringList found;
        for (const QString &name : names) {
            if (question(at(name)))
                found << name;
        }
        return found.join(u' ').toStdString();
    }
    static std::string within(const QStringList &wanted, const QStringList &order)
    {
        QStringList found;
        for (const QString &name : order) {
            if (wanted.contains(name))
                found << name;
        }
        return found.join(u' ').toStdString();
    }

    static bool isEnabled(const QWidget *pane) { return pane->isEnabled(); }
    static bool isHidden(const QWidget *button) { return button->isHidden(); }
    static bool isShown(const QWidget *button) { return !button->isHidden(); }
    /// Opened by its group, whatever its pane.
    static bool isOpen(const QWidget *control)
    {
        if (auto *line = qobject_cast<const QLineEdit *>(control))
            return !line->isReadOnly();
        if (auto *memo = qobject_cast<const QPlainTextEdit *>(control))
            return !memo->isReadOnly();
        return control->isEnabledTo(control->parentWidget());
    }

    /// The panes that are enabled, the controls that are open, the commands out of sight and the save buttons in sight.
    void expectLook(const QStringList &panes, const QStringList &open, const QStringList &hidden,
                    const QStringList &shown) const
    {
        EXPECT_EQ(those(panes_, isEnabled), within(panes, panes_));
        EXPECT_EQ(those(members_, isOpen), within(open, members_));
        EXPECT_EQ(those(commands_, isHidden), within(hidden, commands_));
        EXPECT_EQ(those(saveButtons_, isShown), within(shown, saveButtons_));
    }

    const QStringList panes_ = named("panes");
    const QStringList commands_ = named("commands");
    const QStringList saveButtons_ = named("save buttons");
    QStringList members_;
};

} // namespace

TEST_F(EditModes, OpenOnePaneAndLockItAgain)
{
    QStringList open = named("sale entry");
    expectLook(panes_, open, {}, {});
    for (const char *code : codes) {
        SCOPED_TRACE(code);
        const auto ofCode = [code](const char *what) {
            return named(QLatin1String(code) + u' ' + QLatin1String(what));
        };
        shell().enterEditMode(QLatin1String(code));
        expectLook(ofCode("panes"), open + ofCode("group"), ofCode("commands"), ofCode("save buttons"));
        shell().leaveEditMode(QLatin1String(code));
        // The unit discount stays locked from the first edit on.
        open.removeAll(QStringLiteral("txtSaleProductLists_4"));
        expectLook(panes_, open, {}, {});
    }
    shell().enterEditMode(QStringLiteral("01"));
    EXPECT_EQ(those(panes_, isEnabled), "") << "a code that opens nothing";
    EXPECT_EQ(those(members_, isOpen), within(open, members_));
    shell().leaveEditMode(QStringLiteral("01"));
    expectLook(panes_, open, {}, {});
}

TEST_F(EditModes, TellOpenPanesFromLockedOnesByColour)
{
    const auto window = controls::Ground::Field;
    const auto needed = controls::Ground::Needed;
    const auto out = controls::Ground::OutOfReach;
    const auto locked = controls::Ground::Locked;
    const struct
    {
        const char *control, *code;
        controls::Ground browsing, inEdit;
    } cases[] = {
        {"txtOrderMaster_2", "00", locked, window},   {"txtOrderMaster_0", "00", locked, out},
        {"txtSaleProductLists_5", "00", window, out}, {"txtSaleProductLists_0", "00", locked, out},
        {"txtProSaleInfo_1", "10", needed, needed},   {"txtProSaleInfo_1", "00", needed, out},
        {"txtCmCompanyName", "12", needed, needed},   {"txtTransMoney", "00", locked, out},
        {"txtCustOrderRfndMemo", "02", locked, out},
    };
    const auto name = [](controls::Ground ground) { return controls::colors(ground).back.name().toStdString(); };
    for (const auto &c : cases) {
        SCOPED_TRACE(std::string(c.control) + " " + c.code);
        const auto color = [&c] { return controls::backColor(at(c.control)).name().toStdString(); };
        shell().enterEditMode(QLatin1String(c.code));
        EXPECT_EQ(color(), name(c.inEdit));
        shell().leaveEditMode(QLatin1String(c.code));
        shell().paintEntryColors();
        EXPECT_EQ(color(), name(c.browsing));
    }
}
