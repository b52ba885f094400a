#pragma once

#include "platform/controls/PushCheck.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QWidget>

#include <array>

/// The tab "환경설정": the shop's data, two switches, the logo of the receipts, and the reset of the grids.
class PropertiesPane : public QWidget
{
    Q_OBJECT
public:
    explicit PropertiesPane(QWidget *parent = nullptr);

    /// Reads everything anew; called on each visit of the tab.
    void loadProperties();

signals:
    /// The properties are written; the management list is to be loaded anew, since the hide switch may have changed.
    void propertiesSaved();
    /// "그리드 리셋" was pressed.
    void gridResetRequested();

private:
    QWidget *makeShopData();
    QWidget *makeSwitches();
    QWidget *makeLogo();
    QHBoxLayout *makeButtons();
    void saveProperties();
    void chooseLogo();
    void removeLogo();
    static bool storeLogo(const QString &pictureFile);
    void loadLogo();

    std::array<QLineEdit *, 8> txtProperties_{};
    QCheckBox *chkDoNotUseDiscountForSunap_ = nullptr;
    QCheckBox *chkHideHiddenCheckedProducts_ = nullptr;
    QLabel *picLogo_ = nullptr;
    controls::PushCheck *chkCmdChooseLog_ = nullptr;
    controls::PushCheck *chkCmdRemoveLogo_ = nullptr;
    controls::PushCheck *chkCmdSaveProperties_ = nullptr;
    QPushButton *cmdGridReset_ = nullptr;
};
