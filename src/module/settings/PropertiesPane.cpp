#include "settings/PropertiesPane.h"

#include "forms/FormRow.h"
#include "platform/controls/EventEdge.h"
#include "platform/controls/FileDialog.h"
#include "platform/controls/MessageBox.h"
#include "platform/controls/Named.h"
#include "platform/controls/ShowText.h"
#include "platform/runtime/Conversions.h"
#include "settings/LogoFile.h"
#include "settings/clsProperties.h"

#include <QFile>
#include <QPointer>
#include <QSaveFile>
#include <QVBoxLayout>

namespace {

// In the order of the text boxes, which is the order of reading and writing.
constexpr const char16_t *shopKeys[] = {u"지점명",   u"지점대표자",   u"지점사업자번호", u"우편번호",
                                        u"지점주소", u"지점전화번호", u"홈페이지주소",   u"영수증고객안내문"};
constexpr std::size_t noticeIndex = 7;

const QString noDiscountKey = QStringLiteral("수납시할인사용안함");
const QString hideKey = QStringLiteral("숨기기체크된판매물품목록감추기");

const QSize largestLogo(360, 120);

QString shopKey(std::size_t index)
{
    return QString::fromUtf16(shopKeys[index]);
}

} // namespace

PropertiesPane::PropertiesPane(QWidget *parent)
    : QWidget(parent)
{
    auto *page = new QGridLayout(this);
    page->setContentsMargins(12, 12, 12, 12);
    page->setHorizontalSpacing(12);
    page->addWidget(makeShopData(), 0, 0, 2, 1);
    page->addWidget(makeSwitches(), 0, 1);
    page->addWidget(makeLogo(), 1, 1);
    page->addLayout(makeButtons(), 2, 0, 1, 2);
    page->setColumnStretch(0, 3);
    page->setColumnStretch(1, 2);
    page->setRowStretch(3, 1);
}

QWidget *PropertiesPane::makeShopData()
{
    auto *frame = new QGroupBox(QStringLiteral("지점 정보"));
    auto *form = new QGridLayout(frame);
    for (std::size_t index = 0; index < txtProperties_.size(); ++index) {
        txtProperties_[index] = controls::named(new QLineEdit, QStringLiteral("txtProperties"), int(index));
        addFormRow(form, int(index), 0, shopKey(index) + QLatin1Char(':'), txtProperties_[index]);
    }
    form->setRowStretch(int(txtProperties_.size()), 1);
    return frame;
}

QWidget *PropertiesPane::makeSwitches()
{
    chkDoNotUseDiscountForSunap_ = controls::named(new QCheckBox(QStringLiteral("수납시 할인 사용안함")),
                                                   QStringLiteral("chkDoNotUseDiscountForSunap"));
    chkHideHiddenCheckedProducts_ =
        controls::named(new QCheckBox(QStringLiteral("판매물품목록중 숨기기 체크된 물품 감추기")),
                        QStringLiteral("chkHideHiddenCheckedProducts"));
    auto *frame = new QGroupBox(QStringLiteral("사용 설정"));
    auto *layout = new QVBoxLayout(frame);
    for (QCheckBox *box : {chkDoNotUseDiscountForSunap_, chkHideHiddenCheckedProducts_}) {
        box->setAccessibleName(box->text());
        layout->addWidget(box);
    }
    return frame;
}

QWidget *PropertiesPane::makeLogo()
{
    picLogo_ = controls::named(new QLabel, QStringLiteral("picLogo"));
    picLogo_->setAccessibleName(QStringLiteral("영수증 로고"));
    picLogo_->setAlignment(Qt::AlignCenter);
    picLogo_->setFrameShape(QFrame::StyledPanel);
    picLogo_->setMinimumHeight(largestLogo.height() + 8);
    chkCmdChooseLog_ =
        controls::named(new controls::PushCheck(QStringLiteral("로고선택")), QStringLiteral("chkCmdChooseLog"));
    chkCmdChooseLog_->onPush(this, [this] { chooseLogo(); });
    chkCmdRemoveLogo_ =
        controls::named(new controls::PushCheck(QStringLiteral("로고삭제")), QStringLiteral("chkCmdRemoveLogo"));
    chkCmdRemoveLogo_->onPush(this, [this] { removeLogo(); });
    auto *frame = new QGroupBox(QStringLiteral("영수증 로고"));
    auto *layout = new QVBoxLayout(frame);
    layout->addWidget(picLogo_, 1);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(chkCmdChooseLog_);
    buttons->addStretch();
    buttons->addWidget(chkCmdRemoveLogo_);
    layout->addLayout(buttons);
    return frame;
}

QHBoxLayout *PropertiesPane::makeButtons()
{
    chkCmdSaveProperties_ =
        controls::named(new controls::PushCheck(QStringLiteral("저장")), QStringLiteral("chkCmdSaveProperties"));
    chkCmdSaveProperties_->onPush(this, [this] { saveProperties(); });
    cmdGridReset_ = controls::named(new QPushButton(QStringLiteral("그리드 리셋")), QStringLiteral("cmdGridReset"));
    cmdGridReset_->setAutoDefault(false);
    controls::onEvent(cmdGridReset_, &QPushButton::clicked, this, [this](bool) { emit gridResetRequested(); });
    auto *row = new QHBoxLayout;
    row->addWidget(chkCmdSaveProperties_);
    row->addStretch();
    row->addWidget(cmdGridReset_);
    return row;
}

void PropertiesPane::loadProperties()
{
    clsProperties properties;
    for (std::size_t index = 0; index < noticeIndex; ++index)
        controls::showText(txtProperties_[index], properties.PropValue(shopKey(index)));
    const QString notice = properties.PropValue(shopKey(noticeIndex));
    // A missing notice is written, not shown: the box follows with the next visit.
    if (notice.isEmpty())
        properties.PropValue(shopKey(noticeIndex), QStringLiteral("영수증이 있으면 교환/환불시 보다 편리합니다."));
    else
        controls::showText(txtProperties_[noticeIndex], notice);
    loadLogo();
    chkDoNotUseDiscountForSunap_->setChecked(properties.PropValue(noDiscountKey) == QLatin1String("1"));
    chkHideHiddenCheckedProducts_->setChecked(properties.PropValue(hideKey) == QLatin1String("1"));
}

void PropertiesPane::saveProperties()
{
    const auto flag = [](const QCheckBox *box) { return QString::number(int(box->isChecked())); };
    clsProperties properties;
    for (std::size_t index = 0; index < txtProperties_.size(); ++index)
        properties.PropValue(shopKey(index), runtime::Trim(txtProperties_[index]->text()));
    properties.PropValue(noDiscountKey, flag(chkDoNotUseDiscountForSunap_));
    properties.PropValue(hideKey, flag(chkHideHiddenCheckedProducts_));
    emit propertiesSaved();
}

void PropertiesPane::chooseLogo()
{
    const QString title = QStringLiteral("그림파일 선택");
    const QPointer<PropertiesPane> self(this);
    const QString picture =
        controls::askOpenFile(window(), title, QStringLiteral("그림파일(*.jpg,*.bmp,*ico) (*.jpg *.bmp *.ico)"));
    if (!self)
        return;
    const bool chosen = !picture.isEmpty() && storeLogo(picture);
    loadLogo();
    if (!chosen) // also after a plain cancel
        controls::MsgBox(QStringLiteral("파일을 선택 할 수 없습니다."), controls::InformationIcon,
                         QStringLiteral("그림파일 선택 오류"), this);
}

void PropertiesPane::removeLogo()
{
    const QString title = QStringLiteral("영수증 로고");
    const QPointer<PropertiesPane> self(this);
    if (controls::MsgBox(QStringLiteral("영수증 로고를 삭제하시겠습니까?"), controls::YesNo | controls::QuestionIcon,
                         title, this)
            != controls::Answer::Yes
        || !self)
        return;
    const bool removed = QFile::remove(logoFile()) || !QFile::exists(logoFile());
    loadLogo();
    if (!removed)
        controls::MsgBox(QStringLiteral("영수증 로고를 삭제하지 못했습니다. 잠시 후 다시 시도하십시오."),
                         controls::InformationIcon, title, this);
}

/// A byte copy, whatever the file holds. The old logo goes only when the new one is whole.
bool PropertiesPane::storeLogo(const QString &pictureFile)
{
    QFile picture(pictureFile);
    if (!picture.open(QIODevice::ReadOnly))
        return false;
    const QByteArray bytes = picture.readAll();
    QSaveFile logo(logoFile());
    return picture.error() == QFile::NoError && logo.open(QIODevice::WriteOnly) && logo.write(bytes) == bytes.size()
           && logo.commit();
}

// The file is a plain copy of a picture; its content tells the format, its name does not.
void PropertiesPane::loadLogo()
{
    picLogo_->clear();
    QPixmap logo = QPixmap::fromImage(readLogo(logoFile()));
    if (logo.width() > largestLogo.width() || logo.height() > largestLogo.height())
        logo = logo.scaled(largestLogo, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    picLogo_->setPixmap(logo);
    chkCmdRemoveLogo_->setEnabled(QFile::exists(logoFile()));
}
