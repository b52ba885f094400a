#include "desk/window/SettingsDialog.h"

#include "desk/preferences/Preferences.h"
#include "platform/controls/Appearance.h"
#include "platform/controls/EventEdge.h"
#include "platform/controls/MessageBox.h"
#include "platform/controls/Named.h"
#include "platform/controls/Wheel.h"
#include "platform/print/Printers.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Log.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QGroupBox>
#include <QLabel>
#include <QShortcut>
#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>

namespace desk {

namespace {

using controls::named;

const QString title = QStringLiteral("데스크 설정");

/// A group with a control or two on one line, and what is to be known about them below.
QGroupBox *group(const QString &caption, std::initializer_list<QWidget *> controls, const QString &note)
{
    auto *box = new QGroupBox(caption);
    auto *column = new QVBoxLayout(box);
    column->setContentsMargins(14, 10, 14, 12);
    column->setSpacing(8);
    auto *row = new QHBoxLayout;
    row->setSpacing(10);
    for (QWidget *control : controls) {
        control->setMinimumHeight(32);
        row->addWidget(control, qobject_cast<QPushButton *>(control) ? 0 : 1);
    }
    if (controls.size() == 1 && qobject_cast<QPushButton *>(*controls.begin()))
        row->addStretch(1);
    column->addLayout(row);
    auto *words = new QLabel(note);
    words->setTextFormat(Qt::PlainText);
    words->setWordWrap(true);
    column->addWidget(words);
    return box;
}

/// The sale window writes down where it stood when it is closed.
bool saleIsOpen()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    return std::ranges::any_of(windows, [](const QWidget *window) {
        return window->objectName() == QLatin1String("frmMain") && window->isVisible();
    });
}

} // namespace

SettingsDialog::SettingsDialog(const ado::ConnectionPtr &connection, QWidget *parent)
    : QDialog(parent)
    , connection_(connection)
    , printer_(named(controls::withGuardedWheel(new QComboBox), QStringLiteral("cboReceiptPrinter")))
    , callSign_(named(new QLineEdit, QStringLiteral("txtCallSign")))
    , logFolder_(named(new QLineEdit, QStringLiteral("txtLogFolder")))
    , openLog_(named(new QPushButton(QStringLiteral("폴더 열기")), QStringLiteral("cmdOpenLog")))
    , resetWindows_(
          named(new QPushButton(QStringLiteral("창 위치와 열 배치 초기화")), QStringLiteral("cmdResetWindows")))
    , save_(named(new QPushButton(QStringLiteral("저장")), QStringLiteral("cmdSave")))
    , cancel_(named(new QPushButton(QStringLiteral("취소")), QStringLiteral("cmdCancel")))
{
    setWindowTitle(title);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(18, 16, 18, 14);
    column->setSpacing(12);
    for (QWidget *part : {makePrinter(), makeServer(), makeLog(), makeWindows()})
        column->addWidget(part);
    column->addStretch(1);
    column->addLayout(makeButtons());
    setMinimumWidth(600);
    readPrinters();
    readCallSign();
}

QWidget *SettingsDialog::makePrinter()
{
    printer_->setAccessibleName(QStringLiteral("롤 영수증 프린터"));
    printer_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    return group(QStringLiteral("롤 영수증 프린터"), {printer_},
                 QStringLiteral("이 데스크에만 적용됩니다. 자동 설정이면 용지 폭이 좁은 첫째 프린터로 출력합니다."));
}

QWidget *SettingsDialog::makeServer()
{
    callSign_->setAccessibleName(QStringLiteral("중앙 물품 서버의 콜사인"));
    return group(QStringLiteral("중앙 물품 서버의 콜사인"), {callSign_},
                 QStringLiteral("모든 데스크에 적용됩니다. 비워 두면 중앙 물품 서버를 사용하지 않습니다."));
}

QWidget *SettingsDialog::makeLog()
{
    const QString folder = QDir::toNativeSeparators(runtime::logFolder(QCoreApplication::applicationName()));
    logFolder_->setReadOnly(true);
    logFolder_->setText(folder);
    logFolder_->setCursorPosition(0);
    logFolder_->setToolTip(folder);
    logFolder_->setAccessibleName(QStringLiteral("오류 기록 폴더"));
    controls::setGround(logFolder_, controls::Ground::Locked);
    return group(QStringLiteral("오류 기록"), {logFolder_, openLog_},
                 QStringLiteral("하루에 한 파일씩 14일 동안 보관합니다. 환자의 이름과 메모는 기록하지 않습니다."));
}

QWidget *SettingsDialog::makeWindows()
{
    resetWindows_->setMinimumWidth(200);
    return group(QStringLiteral("창과 목록"), {resetWindows_},
                 QStringLiteral("판매 창의 위치와 크기, 칸의 너비, 목록의 열 배치를 처음 상태로 바꿉니다."));
}

QLayout *SettingsDialog::makeButtons()
{
    auto *row = new QHBoxLayout;
    row->setSpacing(10);
    row->addStretch(1);
    for (QPushButton *button : {save_, cancel_}) {
        button->setMinimumSize(108, 36);
        row->addWidget(button);
    }
    save_->setDefault(true);
    save_->setToolTip(QStringLiteral("저장 (F12)"));
    cancel_->setToolTip(QStringLiteral("취소 (Esc)"));
    for (QPushButton *button : {cancel_, openLog_, resetWindows_})
        button->setAutoDefault(false);
    controls::onEvent(save_, &QPushButton::clicked, this, [this](bool) { save(); });
    controls::onEvent(cancel_, &QPushButton::clicked, this, [this](bool) { reject(); });
    controls::onEvent(openLog_, &QPushButton::clicked, this, [this](bool) { openLog(); });
    controls::onEvent(resetWindows_, &QPushButton::clicked, this, [this](bool) { resetWindows(); });
    controls::onEvent(new QShortcut(Qt::Key_F12, this), &QShortcut::activated, this, [this] { save_->click(); });
    return row;
}

void SettingsDialog::readPrinters()
{
    const QString automatic = QString::fromUtf16(preferences::receiptPrinter.fallback);
    printer_->addItem(QStringLiteral("자동 설정"), automatic);
    const QStringList printers = print::printerNames();
    for (const QString &name : printers)
        printer_->addItem(name, name);
    const QString stored = preferences::value(preferences::receiptPrinter, nullptr);
    if (printer_->findData(stored) < 0)
        printer_->addItem(QStringLiteral("%1 (이 컴퓨터에 없는 프린터)").arg(stored), stored);
    printer_->setCurrentIndex(printer_->findData(stored));
}

void SettingsDialog::readCallSign()
{
    runtime::Attempt attempt;
    attempt([&] { storedCallSign_ = preferences::value(preferences::callSign, connection_); });
    callSign_->setText(storedCallSign_);
    callSign_->setEnabled(!attempt.failed());
    if (attempt.failed())
        callSign_->setPlaceholderText(QStringLiteral("데이터베이스에서 가져오지 못했습니다."));
}

void SettingsDialog::save()
{
    // It is every desk's: what nobody changed here may have been set elsewhere meanwhile.
    if (callSign_->isEnabled() && callSign_->text() != storedCallSign_)
        preferences::setValue(preferences::callSign, callSign_->text().trimmed(), connection_);
    preferences::setValue(preferences::receiptPrinter, printer_->currentData().toString(), nullptr);
    accept();
}

void SettingsDialog::openLog()
{
    QDir().mkpath(logFolder_->text());
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(logFolder_->text())))
        controls::MsgBox(QStringLiteral("폴더를 열지 못했습니다. 파일 관리자에서 여십시오.\n") + logFolder_->text(),
                         controls::InformationIcon, title, this);
}

void SettingsDialog::resetWindows()
{
    using namespace controls;
    if (saleIsOpen()) {
        MsgBox(QStringLiteral("판매 창이 열려 있어 초기화하지 않았습니다. 판매 창을 닫은 뒤 다시 시도하십시오."),
               InformationIcon, title, this);
        return;
    }
    if (MsgBox(QStringLiteral("판매 창의 위치와 크기, 목록의 열 배치를 초기화하시겠습니까?"), YesNo | QuestionIcon,
               title, this)
        != Answer::Yes)
        return;
    preferences::resetWindows();
    MsgBox(QStringLiteral("초기화했습니다. 다음에 판매 창을 열 때 적용됩니다."), InformationIcon, title, this);
}

} // namespace desk
