#include "platform/controls/MessageBox.h"

#include "platform/controls/Modal.h"

#include <QApplication>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QShortcut>

#include <utility>
#include <vector>

namespace controls {

namespace {

struct BoxButton
{
    Answer answer;
    const char16_t *caption;
    QMessageBox::ButtonRole role;
    QList<QKeySequence> keys = {};
};

// The second of each is the same key with Hangul on.
const QList<QKeySequence> yesKeys{QKeySequence(Qt::Key_Y), QKeySequence(u'ㅛ')};
const QList<QKeySequence> noKeys{QKeySequence(Qt::Key_N), QKeySequence(u'ㅜ')};

constexpr int ButtonMask = 0x0F;
constexpr int IconMask = 0x70;

/// Buttons in their order. Esc answers the last one, by the roles.
std::vector<BoxButton> buttonsOf(int flags)
{
    const BoxButton confirm{Answer::Confirm, u"확인", QMessageBox::AcceptRole};
    const BoxButton yes{Answer::Yes, u"예", QMessageBox::YesRole, yesKeys};
    const BoxButton no{Answer::No, u"아니오", QMessageBox::NoRole, noKeys};
    const BoxButton cancel{Answer::Cancel, u"취소", QMessageBox::RejectRole};
    switch (flags & ButtonMask) {
    case YesNoCancel:
        return {yes, no, cancel};
    case YesNo:
        return {yes, no};
    default:
        return {confirm};
    }
}

QMessageBox::Icon iconOf(int flags)
{
    switch (flags & IconMask) {
    case QuestionIcon:
        return QMessageBox::Question;
    case WarningIcon:
        return QMessageBox::Warning;
    case InformationIcon:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

/// The texts of the system break their lines by CR or by CR LF.
QString withLineBreaks(QString text)
{
    return text.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(QLatin1Char('\r'), QLatin1Char('\n'));
}

/// The button is pressed by a key of its own; one that is held down counts once.
void answerByKeys(QPushButton *button, const QList<QKeySequence> &keys)
{
    if (keys.isEmpty())
        return;
    auto *shortcut = new QShortcut(button);
    shortcut->setKeys(keys);
    shortcut->setAutoRepeat(false);
    QObject::connect(shortcut, &QShortcut::activated, button, &QPushButton::click);
    const QString key = keys.constFirst().toString();
    button->setToolTip(button->text() + QStringLiteral(" (%1)").arg(key));
    button->setAccessibleDescription(QStringLiteral("단축키 ") + key);
}

Answer showBox(const QString &text, int flags, const QString &title, QWidget *owner, const QString &remark)
{
    const Modal<QMessageBox> box(owner);
    box->setWindowTitle(title);
    box->setIcon(iconOf(flags));
    box->setTextFormat(Qt::PlainText);
    box->setText(withLineBreaks(text));
    box->setInformativeText(remark);

    const std::vector<BoxButton> buttons = buttonsOf(flags);
    std::vector<QPushButton *> shown;
    for (const BoxButton &button : buttons) {
        shown.push_back(box->addButton(QString::fromUtf16(button.caption), button.role));
        answerByKeys(shown.back(), button.keys);
    }
    const bool second = (flags & SecondButtonDefault) && shown.size() > 1;
    box->setDefaultButton(shown[second ? 1 : 0]);

    const bool stands = runModal(box.get()).has_value();
    for (std::size_t i = 0; stands && i < shown.size(); ++i) {
        if (box->clickedButton() == shown[i])
            return buttons[i].answer;
    }
    return buttons.back().answer;
}

/// The window that a box stands before. While one box follows another no window is active for a moment: then it is the
/// one of the box before.
QWidget *windowBehind(QWidget *owner)
{
    static QPointer<QWidget> last;
    if (QWidget *window = owner ? owner->window() : QApplication::activeWindow()) {
        last = window;
        return window;
    }
    return last && last->isVisible() ? last.data() : nullptr;
}

MessageHandler &installedHandler()
{
    static MessageHandler handler;
    return handler;
}

} // namespace

Answer MsgBox(const QString &text, int flags, const QString &title, QWidget *owner, const QString &remark)
{
    QWidget *window = windowBehind(owner);
    const QString shownTitle = !title.isEmpty() || !window ? title : window->windowTitle();
    if (const MessageHandler handler = installedHandler())
        return handler(text, flags, shownTitle, remark);
    return showBox(text, flags, shownTitle, window, remark);
}

void setMessageHandler(MessageHandler handler)
{
    installedHandler() = std::move(handler);
}

} // namespace controls
