#include "money/frmSimpleReceipt.h"
#include "tests/support/DialogDriver.h"

#include <QClipboard>
#include <QInputMethodEvent>

#include <gtest/gtest.h>

namespace {

/// The dialog in front, with keys that go through the window as a keyboard's do.
class SimpleReceiptKeys : public testing::Test
{
protected:
    SimpleReceiptKeys() { open(); }

    void open()
    {
        dialog_ = std::make_unique<frmSimpleReceipt>();
        form_ = std::make_unique<DialogDriver>(dialog_.get());
        QObject::connect(dialog_.get(), &frmSimpleReceipt::AppendDBGeneral, [this] { ++saved_; });
        dialog_->Operation(0, 41, QStringLiteral("홍길동"), QStringLiteral("C-1"), QDate(2026, 11, 20), 12340, 7, 0,
                           QDate(2026, 11, 24), 0, QStringLiteral("0"), nullptr);
        dialog_->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(dialog_.get()));
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { form_->key(key, modifiers); }
    void repeat(Qt::Key key)
    {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, QString(), true);
        QApplication::sendEvent(QApplication::focusWidget(), &event);
    }
    void standOn(const char *name) { form_->find<QWidget>(name)->setFocus(Qt::TabFocusReason); }
    bool stepsEnabled() const { return form_->find<QWidget>("mudFirstSunap")->isEnabled(); }

    std::unique_ptr<frmSimpleReceipt> dialog_;
    std::unique_ptr<DialogDriver> form_;
    int saved_ = 0;
};

} // namespace

TEST_F(SimpleReceiptKeys, FunctionKeysSaveAndCancelOnce)
{
    key(Qt::Key_F12);
    EXPECT_EQ(saved_, 1);
    EXPECT_FALSE(dialog_->isVisible());

    for (Qt::Key leave : {Qt::Key_F9, Qt::Key_Escape}) {
        open();
        key(leave);
        EXPECT_FALSE(dialog_->isVisible());
    }
    open();
    form_->press("cmdCancel");
    EXPECT_FALSE(dialog_->isVisible());
    // A key still held from the window before must not answer this one.
    open();
    repeat(Qt::Key_F12);
    repeat(Qt::Key_F9);
    EXPECT_TRUE(dialog_->isVisible());
    EXPECT_EQ(saved_, 1);
}

TEST_F(SimpleReceiptKeys, KeysMoveTheFocusAndPressNothing)
{
    form_->expectMoves({
        {"txtGeneralSuNapMoney_0", Qt::Key_Return, {}, "chkGeneralRemain2Money_0"},
        {"txtGeneralSuNapMoney_0", Qt::Key_Down, {}, "chkGeneralRemain2Money_0"},
        {"txtGeneralSuNapMoney_0", Qt::Key_Up, {}, "txtGeneralJeolSaMoney"},
        {"cboGeneralPercent", Qt::Key_Return, {}, "chkGeneralHalinConfirm"},
        {"dtpTodat", Qt::Key_Return, {}, "chkBonin100"},
        {"chkGeneralRemain2Money_2", Qt::Key_Return, {}, "chkGeneralRemain2Money_3"},
        {"chkGeneralRemainToMisuMoney", Qt::Key_Return, {}, "cmdConfirm"},
        {"cboGeneralJeolsaGubun", Qt::Key_Down, Qt::ControlModifier, "txtGeneralJeolSaMoney"},
        {"cmdConfirm", Qt::Key_Up, Qt::ControlModifier, "chkGeneralRemainToMisuMoney"},
        {"txtGeneralSuNapMoney_1", Qt::Key_Down, Qt::ControlModifier, "chkGeneralRemain2Money_2"},
    });
    EXPECT_TRUE(dialog_->isVisible());
    EXPECT_EQ(saved_, 0);
    EXPECT_EQ(form_->text("txtGeneralSuNapMoney_0"), "12300");
    EXPECT_EQ(form_->find<QComboBox>("cboGeneralJeolsaGubun")->currentIndex(), 2);
    EXPECT_EQ(form_->find<QComboBox>("cboGeneralPercent")->currentText().toStdString(), "0");
}

TEST_F(SimpleReceiptKeys, AmountsTakeDigitsAndBackspaceOnly)
{
    for (const char *name :
         {"txtGeneralHalInMoney", "txtGeneralSuNapMoney_0", "txtGeneralSuNapMoney_1", "cboGeneralPercent"}) {
        SCOPED_TRACE(name);
        standOn(name);
        QApplication::clipboard()->setText("9a");
        for (char character : {'1', '-', '0', '.', '9', 'x', ',', '8'})
            QTest::keyClick(dialog_->windowHandle(), character);
        key(Qt::Key_A, Qt::ControlModifier); // nothing but the last digit goes
        key(Qt::Key_Backspace);
        key(Qt::Key_V, Qt::ControlModifier);
        key(Qt::Key_Z, Qt::ControlModifier);
        QInputMethodEvent hangul;
        hangul.setCommitString("가");
        QApplication::sendEvent(QApplication::focusWidget(), &hangul);
        auto *combo = qobject_cast<QComboBox *>(QApplication::focusWidget());
        EXPECT_EQ(combo ? combo->currentText().toStdString() : form_->text(name), "109");
    }
    key(Qt::Key_Down, Qt::AltModifier);
    EXPECT_TRUE(QApplication::activePopupWidget()) << "the list of percents opens by keys";
}

TEST_F(SimpleReceiptKeys, AClickThatBringsTheFocusSelectsTheWholeTextTheNextOneDoesNot)
{
    const auto clickAtLeft = [](QWidget *box) {
        QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(3, box->height() / 2));
    };
    auto *percent = form_->find<QComboBox>("cboGeneralPercent");
    for (QLineEdit *box : {percent->lineEdit(), form_->find<QLineEdit>("txtGeneralHalInMoney")}) {
        box->setText(QStringLiteral("0"));
        clickAtLeft(box);
        for (char digit : {'1', '5'})
            QTest::keyClick(dialog_->windowHandle(), digit);
        EXPECT_EQ(box->text(), QStringLiteral("15"));
        clickAtLeft(box);
        EXPECT_EQ(box->selectedText(), QString());
    }
    // The click that opens the list brings the focus as well; what follows in the text box is a click of its own.
    QTest::mouseClick(percent, Qt::LeftButton, {}, QPoint(percent->width() - 8, percent->height() / 2));
    percent->hidePopup();
    clickAtLeft(percent->lineEdit());
    EXPECT_EQ(percent->lineEdit()->selectedText(), QString());
}

TEST_F(SimpleReceiptKeys, StepsGoToTheAmountThatHasTheFocusUntilAKeyIsTyped)
{
    EXPECT_TRUE(stepsEnabled());
    auto *steps = form_->find<QWidget>("mudFirstSunap");
    const auto step = [&](int index) {
        auto *button = steps->findChild<QAbstractButton *>(QStringLiteral("ssrUpDown_%1").arg(index));
        QTest::mouseClick(button, Qt::LeftButton);
        return form_->text("txtGeneralSuNapMoney_0");
    };
    const char *after[] = {"22300", "23300", "23400", "13400", "12400", "12300"};
    for (int index = 0; index < 6; ++index)
        EXPECT_EQ(step(index), after[index]);
    EXPECT_EQ(form_->focus(), "txtGeneralSuNapMoney_0");
    step(3);
    EXPECT_EQ(step(3), "-7700") << "there is no floor";
    EXPECT_EQ(form_->text("lblGeneralRemain"), "20,000");

    form_->find<QLineEdit>("txtGeneralSuNapMoney_0")->clear();
    EXPECT_EQ(step(1), "1000") << "from nothing";
    QFocusEvent windowBehind(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
    QApplication::sendEvent(QApplication::focusWidget(), &windowBehind);
    EXPECT_TRUE(stepsEnabled()) << "another window came to the front";

    key(Qt::Key_1);
    EXPECT_FALSE(stepsEnabled());
    EXPECT_EQ(step(0), form_->text("txtGeneralSuNapMoney_0")) << "a disabled step does nothing";
    standOn("txtGeneralHalInMoney");
    EXPECT_TRUE(stepsEnabled());
    standOn("txtGeneralJeolSaMoney");
    EXPECT_FALSE(stepsEnabled());
}
