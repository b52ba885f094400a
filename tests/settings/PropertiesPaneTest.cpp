#include "settings/PropertiesPane.h"

#include "settings/clsProperties.h"
#include "tests/settings/SettingsDatabase.h"

#include "tests/support/DialogDriver.h"
#include "tests/support/MessageRecorder.h"

#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QImage>
#include <QTimer>

namespace {

const QString notice = QStringLiteral("영수증고객안내문");
const QString defaultNotice = QStringLiteral("영수증이 있으면 교환/환불시 보다 편리합니다.");

} // namespace

class PropertiesTab : public SettingsDatabase
{
protected:
    QLineEdit *box(int index) { return pane_.findChild<QLineEdit *>(QStringLiteral("txtProperties_%1").arg(index)); }
    QCheckBox *check(const char *name) { return pane_.findChild<QCheckBox *>(QLatin1String(name)); }
    void press(const char *name) { pane_.findChild<QPushButton *>(QLatin1String(name))->click(); }

    /// Presses "로고선택" and picks the file in the dialog that comes; an empty name cancels it.
    void chooseLogo(const QString &file)
    {
        EXPECT_TRUE(inDialog([this] { press("chkCmdChooseLog"); },
                             [file](const DialogDriver &form) {
                                 auto *dialog = qobject_cast<QFileDialog *>(form.window());
                                 ASSERT_TRUE(dialog);
                                 EXPECT_EQ(dialog->windowTitle().toStdString(), "그림파일 선택");
                                 form.find<QLineEdit>("fileNameEdit")->setText(file);
                                 static_cast<QDialog *>(dialog)->done(file.isEmpty() ? QDialog::Rejected
                                                                                     : QDialog::Accepted);
                             }));
    }

    PropertiesPane pane_;
};

TEST_F(PropertiesTab, AMissingNoticeIsWrittenAtOnceAndShownWithTheNextVisit)
{
    pane_.loadProperties();
    EXPECT_EQ(clsProperties().PropValue(notice), defaultNotice);
    EXPECT_EQ(box(7)->text(), QString());
    pane_.loadProperties();
    EXPECT_EQ(box(7)->text(), defaultNotice);

    box(7)->clear();
    press("chkCmdSaveProperties");
    EXPECT_EQ(clsProperties().PropValue(notice), QString());
    pane_.loadProperties();
    EXPECT_EQ(clsProperties().PropValue(notice), defaultNotice);
}

TEST_F(PropertiesTab, SavesTrimmedTextsAndBothSwitchesAndTellsOfIt)
{
    pane_.loadProperties();
    const QStringList keys = {QStringLiteral("지점명"),         QStringLiteral("지점대표자"),
                              QStringLiteral("지점사업자번호"), QStringLiteral("우편번호"),
                              QStringLiteral("지점주소"),       QStringLiteral("지점전화번호"),
                              QStringLiteral("홈페이지주소"),   notice};
    for (int index = 0; index < keys.size(); ++index)
        box(index)->setText(QStringLiteral("  값 %1 ").arg(index));
    check("chkDoNotUseDiscountForSunap")->setChecked(true);
    int saved = 0;
    QObject::connect(&pane_, &PropertiesPane::propertiesSaved, &pane_, [&] {
        ++saved;
        EXPECT_EQ(clsProperties().PropValue("수납시할인사용안함"), QStringLiteral("1"));
    });
    press("chkCmdSaveProperties");
    EXPECT_EQ(saved, 1);
    EXPECT_EQ(clsProperties().PropValue("숨기기체크된판매물품목록감추기"), QStringLiteral("0"));

    PropertiesPane otherDesk;
    otherDesk.loadProperties();
    for (int index = 0; index < keys.size(); ++index) {
        EXPECT_EQ(clsProperties().PropValue(keys[index]), QStringLiteral("값 %1").arg(index));
        EXPECT_EQ(otherDesk.findChild<QLineEdit *>(QStringLiteral("txtProperties_%1").arg(index))->text(),
                  QStringLiteral("값 %1").arg(index));
    }
    EXPECT_TRUE(otherDesk.findChild<QCheckBox *>("chkDoNotUseDiscountForSunap")->isChecked());
    EXPECT_FALSE(otherDesk.findChild<QCheckBox *>("chkHideHiddenCheckedProducts")->isChecked());
}

TEST_F(PropertiesTab, OnlyTheTextOneSwitchesOn)
{
    for (const char *stored : {"0", "", "True", "01"}) {
        clsProperties().PropValue("수납시할인사용안함", QLatin1String(stored));
        check("chkDoNotUseDiscountForSunap")->setChecked(true);
        pane_.loadProperties();
        EXPECT_FALSE(check("chkDoNotUseDiscountForSunap")->isChecked()) << stored;
    }
}

TEST_F(PropertiesTab, ShowsALogoWhateverItsFormatAndTakesItAwayWithTheFile)
{
    auto *logo = pane_.findChild<QLabel *>("picLogo");
    QImage picture(900, 300, QImage::Format_RGB32);
    picture.fill(Qt::red);
    const QString file = folder_.filePath("RcptLog.dat");
    for (const char *format : {"BMP", "JPG"}) {
        ASSERT_TRUE(picture.save(file, format));
        pane_.loadProperties();
        ASSERT_FALSE(logo->pixmap().isNull()) << format;
        EXPECT_EQ(logo->pixmap().width(), 3 * logo->pixmap().height()) << format;
        EXPECT_LT(logo->pixmap().width(), 900) << format;
    }
    QFile::remove(file);
    pane_.loadProperties();
    EXPECT_TRUE(logo->pixmap().isNull());
}

TEST_F(PropertiesTab, TheLogoGoesWhenTheUserAgrees)
{
    MessageRecorder boxes;
    const QString file = folder_.filePath("RcptLog.dat");
    ASSERT_TRUE(QImage(30, 10, QImage::Format_RGB32).save(file, "BMP"));
    pane_.loadProperties();
    auto *button = pane_.findChild<QPushButton *>("chkCmdRemoveLogo");
    for (const controls::Answer answer : {controls::Answer::No, controls::Answer::Yes}) {
        const bool goes = answer == controls::Answer::Yes;
        boxes.answers = {answer};
        button->click();
        EXPECT_EQ(QFile::exists(file), !goes);
        EXPECT_EQ(pane_.findChild<QLabel *>("picLogo")->pixmap().isNull(), goes);
        EXPECT_EQ(button->isEnabled(), !goes) << "nothing is left to remove";
    }
}

TEST_F(PropertiesTab, TheLogoIsAByteCopyOfTheChosenFileAndStaysWhenNoneIsChosen)
{
    MessageRecorder boxes;
    auto *logo = pane_.findChild<QLabel *>("picLogo");
    const QString target = folder_.filePath("RcptLog.dat");
    const auto bytesOf = [](const QString &name) {
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
    const QString picture = folder_.filePath("로고.bmp");
    QImage image(30, 10, QImage::Format_RGB32);
    image.fill(Qt::blue);
    ASSERT_TRUE(image.save(picture, "BMP"));
    chooseLogo(picture);
    EXPECT_TRUE(boxes.messages.isEmpty());
    EXPECT_EQ(bytesOf(target), bytesOf(picture));
    EXPECT_EQ(logo->pixmap().width(), 30);

    QFile::rename(picture, folder_.filePath("moved.bmp"));
    for (const QString &none : {QString(), picture}) {
        logo->clear();
        chooseLogo(none);
        EXPECT_EQ(logo->pixmap().width(), 30);
    }
    ASSERT_EQ(boxes.messages.size(), 2);
    for (const MessageRecorder::Message &box : boxes.messages) {
        EXPECT_EQ((box.title + u'|' + box.text).toStdString(), "그림파일 선택 오류|파일을 선택 할 수 없습니다.");
        EXPECT_EQ(box.flags, controls::InformationIcon);
    }
}
