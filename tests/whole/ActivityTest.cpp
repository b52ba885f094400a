#include "tests/whole/SaleDesk.h"

#include <QDialog>
#include <QLabel>
#include <QScreen>

#include <algorithm>
#include <map>

namespace {

/// What stands on the screen, and what a painting of all would put there.
void expectUpToDate(QWidget *window, const std::string &when)
{
    walk::settle();
    const auto shown = window->screen()->grabWindow(window->winId()).toImage().convertToFormat(QImage::Format_RGB32);
    const QImage anew = window->grab().toImage().convertToFormat(QImage::Format_RGB32);
    ASSERT_EQ(shown.size(), anew.size());
    QRect stale;
    for (int y = 0; y < anew.height(); ++y) {
        for (int x = 0; x < anew.width(); ++x) {
            if (shown.pixel(x, y) != anew.pixel(x, y))
                stale |= QRect(x, y, 1, 1);
        }
    }
    const QWidget *const at = window->childAt(stale.center());
    EXPECT_TRUE(stale.isNull()) << when << ": not painted in " << stale.width() << "x" << stale.height() << " at "
                                << (at ? at->objectName().toStdString() : "the window");
}

/// How often widgets are painted while it lives.
class Painted : public QObject
{
public:
    Painted() { qApp->installEventFilter(this); }
    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            ++times_[object];
        return false;
    }
    bool has(const QObject *object) const { return times(object) > 0; }
    int times(const QObject *object) const
    {
        const auto found = times_.find(object);
        return found == times_.end() ? 0 : found->second;
    }

private:
    std::map<const QObject *, int> times_;
};

class Activity : public testing::Test
{
protected:
    Activity()
    {
        QApplication::setCursorFlashTime(0);
        runFile(desk_.database, "whole/orders.sql");
        desk_.open();
    }
    ~Activity() override { QApplication::setCursorFlashTime(1000); }

    /// Another window comes to the front, beside it: a screen shows what stands over it, too.
    void leave(QDialog &other)
    {
        other.move(desk_.window()->geometry().right() + 10, 0);
        other.show();
        QApplication::setActiveWindow(&other);
        walk::settle();
        ASSERT_FALSE(desk_.window()->isActiveWindow());
    }

    SaleDesk desk_;
};

} // namespace

TEST_F(Activity, WhatShowsAnotherColourBehindIsPaintedThere)
{
    desk_.control("tdbSaleProductLists")->setFocus();
    auto *box = desk_.control<QLineEdit>("txtSaleProductLists_5");
    box->setText(QStringLiteral("12"));
    box->selectAll(); // by a flow: the focus is elsewhere
    const auto labels = desk_.window()->findChildren<QLabel *>();
    const auto told = std::ranges::find_if(
        labels, [](const QLabel *label) { return label->isVisible() && label->text().size() > 1; });
    ASSERT_NE(told, labels.end());
    QLabel *const label = *told;
    QPalette fading = label->palette();
    fading.setColor(QPalette::Inactive, QPalette::WindowText, Qt::red);
    label->setPalette(fading);
    walk::settle();
    QDialog other;
    leave(other);
    expectUpToDate(desk_.window(), "behind");
}

TEST_F(Activity, ListsThatShowNothingElseAreNotPaintedBehind)
{
    desk_.control("txtFindProduct")->setFocus();
    walk::settle();
    QDialog other;
    const Painted painted;
    leave(other);
    EXPECT_TRUE(painted.has(desk_.control("txtFindProduct")));
    for (const char *list : {"tdbSaleProductLists", "tdbCustSaleMaster", "tdbCustSaleDetails", "tdbCustTranManage"})
        EXPECT_FALSE(painted.has(desk_.grid(list)->viewport())) << list;
}

/// A layout that ends behind a painting has all around it painted once more.
TEST_F(Activity, WhatStandsStillIsPaintedOnceWhenAnotherCustomerComes)
{
    desk_.open(8);
    const Painted painted;
    desk_.open();
    EXPECT_EQ(painted.times(desk_.control("c1elaCustDetail")), 1);
    EXPECT_EQ(painted.times(desk_.control("c1elaProductInfo")), 1);
    expectUpToDate(desk_.window(), "another customer");
}
