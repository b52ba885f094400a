#include "entry/Shortcuts.h"

#include "entry/KeySheet.h"
#include "forms/ControlsByName.h"
#include "forms/KeyHint.h"
#include "platform/controls/EventEdge.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QShortcut>
#include <QTabWidget>

namespace {

constexpr char16_t ofSale[] = u"판매";
constexpr char16_t ofEdit[] = u"수정 중";
constexpr char16_t ofWindow[] = u"모든 화면";
constexpr char16_t ofMoney[] = u"수납·미수금 창";
constexpr char16_t ofBoxes[] = u"질문 창";

void act(QWidget &window, QWidget *control, const Shortcut &shortcut)
{
    using Does = Shortcut::Does;
    switch (shortcut.does) {
    case Does::Presses:
        if (auto *button = qobject_cast<QAbstractButton *>(control))
            button->click();
        break;
    case Does::EntersBox:
        control->setFocus(Qt::ShortcutFocusReason);
        if (auto *box = qobject_cast<QLineEdit *>(control))
            box->selectAll();
        break;
    case Does::TurnsTo:
        if (auto *tabs = qobject_cast<QTabWidget *>(control))
            tabs->setCurrentIndex(shortcut.tab);
        break;
    case Does::ShowsKeys:
        showKeySheet(window);
        break;
    case Does::IsTold:
        break;
    }
}

/// The shortcut belongs to its control, so Qt lets it act only where that is enabled and visible.
void install(QWidget &window, QWidget *control, const Shortcut &shortcut)
{
    auto *key = new QShortcut(QKeySequence(QLatin1String(shortcut.keys)), control);
    key->setAutoRepeat(false);
    QObject::connect(key, &QShortcut::activated, control, [&window, control, &shortcut] {
        if (!controls::eventRunsIn(window))
            act(window, control, shortcut);
    });
}

void tell(QWidget *control, const Shortcut &shortcut)
{
    const QString keys = QLatin1String(shortcut.keys);
    if (auto *tabs = qobject_cast<QTabWidget *>(control)) {
        tabs->setTabToolTip(shortcut.tab, keys);
        return;
    }
    setHintIfNone(control, QString::fromUtf16(shortcut.what));
    setKeyHint(control, keys);
}

} // namespace

const std::vector<Shortcut> &shortcuts()
{
    using enum Shortcut::Does;
    // clang-format off
    static const std::vector<Shortcut> table{
        {ofSale, "Ctrl+F", u"물품 찾기", IsTold, "txtFindProduct"},
        {ofSale, "F4", u"수량 입력", EntersBox, "txtSaleProductLists_5"},
        {ofSale, "F6", u"물품 추가", Presses, "cmdCSAppendDetail"},
        {ofSale, "F8", u"수납", Presses, "chkCmdAutomateReceipt"},
        {ofSale, "F7", u"미수금관리", Presses, "chkCmdRunMisuMoneyManger"},
        {ofSale, "Ctrl+P", u"영수증 출력", Presses, "chkCmdPrintReceipt_0"},
        {ofSale, "Ctrl+Shift+P", u"롤프린터로 영수증 출력", Presses, "chkCmdPrintReceiptRollPrinter"},
        {ofSale, "F2", u"거래 목록에서 미수금 입력"},
        {ofEdit, "Esc", u"거래 수정 취소", Presses, "chkcmdCSSaveInfo_1"},
        {ofEdit, "Esc", u"수납 내역 수정 취소", Presses, "chkCmdSaveTrans_1"},
        {ofEdit, "Esc", u"물품 수정 취소", Presses, "chkCmdSaveProduct_1"},
        {ofEdit, "Esc", u"구매 내역 수정 취소", Presses, "chkcmdIncomingSave_1"},
        {ofEdit, "Esc", u"거래처 수정 취소", Presses, "chkcmdCmpnyMstrSave_1"},
        {ofWindow, "Ctrl+1", u"판매관리 화면", TurnsTo, "c1tabMain", 0},
        {ofWindow, "Ctrl+2", u"판매물품관리 화면", TurnsTo, "c1tabMain", 1},
        {ofWindow, "Ctrl+3", u"통계 화면", TurnsTo, "c1tabMain", 2},
        {ofWindow, "Ctrl+4", u"환경설정 화면", TurnsTo, "c1tabMain", 3},
        {ofWindow, "Tab", u"다음 칸 (Shift+Tab 이전 칸)"},
        {ofWindow, "F1", u"단축키 보기", ShowsKeys, "MainStatusBar"},
        {ofMoney, "F12", u"저장 (미수금 관리 창에서는 닫기)"},
        {ofMoney, "F9", u"취소"},
        {ofMoney, "Enter", u"다음 칸"},
        {ofMoney, "Ctrl+Down", u"다음 칸 (Ctrl+Up 이전 칸)"},
        {ofMoney, "Space", u"미수금 관리 창에서 선택한 거래의 미수금 수납"},
        {ofBoxes, "Y", u"예"},
        {ofBoxes, "N", u"아니오"},
        {ofBoxes, "Esc", u"취소 (취소가 없으면 아니오)"},
    };
    // clang-format on
    return table;
}

void installShortcuts(QWidget &window)
{
    const QMultiHash<QString, QWidget *> controls = controlsByName(window);
    for (const Shortcut &shortcut : shortcuts()) {
        QWidget *control = controls.value(QLatin1String(shortcut.control));
        if (!control)
            continue;
        if (shortcut.does != Shortcut::Does::IsTold)
            install(window, control, shortcut);
        tell(control, shortcut);
    }
}
