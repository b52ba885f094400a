#pragma once

#include "entry/EditModes.h"
#include "products/DealerPane.h"
#include "products/IncomingPane.h"
#include "products/ProductPane.h"
#include "tests/sales/SaleDatabase.h"
#include "tests/support/PaneWindow.h"

#include <QHBoxLayout>
#include <QTableView>

#include <functional>

/// A window with the panes of the second tab, its edit modes and connections those of the main window.
class ManageWindow : public PaneWindow
{
public:
    explicit ManageWindow(SaleSession &session)
        : products(new ProductPane(session, *this, this))
        , incoming(new IncomingPane(session, *this, this))
        , dealers(new DealerPane(session, *this, this))
    {
        auto *columns = new QHBoxLayout(this);
        columns->addWidget(products, 1);
        auto *purchases = new QVBoxLayout;
        purchases->addWidget(incoming);
        purchases->addWidget(dealers);
        columns->addLayout(purchases, 1);
        modes.addContainers(products->containers() + incoming->containers() + dealers->containers());
        for (const EditModeTable &table : {products->editMode(), incoming->editMode(), dealers->editMode()})
            modes.addTable(table);
        modes.lockAllPanes();
        modes.paintEntryColors();
        connect(products, &ProductPane::currentProductChanged, incoming, &IncomingPane::loadProductIncoming);
        session.rsProductIncoming = std::make_unique<ado::Recordset>();
        products->loadProductListsManager();
        session.rsCompanyMaster = std::make_unique<ado::Recordset>();
        dealers->loadCompanyMaster();
        resize(1280, 640);
        show();
        (void)QTest::qWaitForWindowActive(this);
    }

    void enterEditMode(const QString &code) override { modes.enterEditMode(code); }
    void leaveEditMode(const QString &code) override { modes.leaveEditMode(code); }
    bool isInEdit(const QString &code) const override { return modes.isInEdit(code); }
    void paintEntryColors() override { modes.paintEntryColors(); }

    void type(const char *name, const char *typed)
    {
        if (auto *memo = findChild<QPlainTextEdit *>(QString::fromLatin1(name)))
            memo->setPlainText(QString::fromUtf8(typed));
        else
            at<QLineEdit>(name).setText(QString::fromUtf8(typed));
    }

    EditModes modes;
    ProductPane *products;
    IncomingPane *incoming;
    DealerPane *dealers;
};

class ProductDesk : public SaleDatabase
{
protected:
    void open() { window_ = std::make_unique<ManageWindow>(session_); }
    /// As at the end of the real one, which owns its session.
    void close()
    {
        window_.reset();
        session_.release();
    }
    bool isUp() const { return window_ != nullptr; }
    ManageWindow &window() { return *window_; }
    ado::Recordset &list() { return *session_.rsSaleProductListsManager; }
    void choose(const char *grid, int row)
    {
        auto &view = window().at<QTableView>(grid);
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.visualRect(view.model()->index(row, 2)).center());
    }
    /// Every box is answered with yes or confirmed, after this was done.
    void whileABoxStands(const std::function<void()> &act)
    {
        controls::setMessageHandler([this, act](const QString &text, int flags, const QString &title) {
            boxes_.boxes.push_back({text, flags, title});
            act();
            return flags & controls::YesNo ? controls::Answer::Yes : controls::Answer::Confirm;
        });
    }

    BoxReader boxes_;

private:
    std::unique_ptr<ManageWindow> window_;
};
