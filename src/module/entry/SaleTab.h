#pragma once

#include <QList>
#include <QSplitter>
#include <QWidget>

#include <array>

/// The page of a sale: the customer above three columns. Column 1 holds the product list over the entry pane; in columns
/// 2 and 3 three rows line up, each list beside its form. Dividers between columns and rows can be dragged.
class SaleTab : public QWidget
{
    Q_OBJECT
public:
    /// One row of columns 2 and 3: strips of buttons above the list, the form beside them.
    struct Row
    {
        QWidget *strip; ///< may be null
        QWidget *list;
        QWidget *form;
        int stretch;
    };

    SaleTab(QWidget *customer, QWidget *productList, QWidget *entry, const std::array<Row, 3> &rows,
            QWidget *parent = nullptr);

    /// Divides the columns; named c1elaMain.
    QSplitter *columns() const { return columns_; }

    /// Whether the page has been on the screen, so that its dividers stand where the user saw them.
    bool wasShown() const { return wasShown_; }

signals:
    /// The page has become too low for everything, or high enough again.
    void roomIsShort(bool isShort);

protected:
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void keepRowsInLine();

    QSplitter *columns_;
    QSplitter *lists_;
    QSplitter *forms_;
    bool wasShown_ = false;
};
