#pragma once

#include "forms/PaneContract.h"
#include "session/SaleSession.h"

#include <QLineEdit>
#include <QWidget>

#include <array>

/// The strip above the sale: who the customer is, nine read-only boxes.
class CustomerPane : public QWidget
{
    Q_OBJECT
public:
    explicit CustomerPane(QWidget *parent = nullptr);

    void show(const Customer &customer);
    ControlGroup colCustDetail() const;

    /// Its first line: the window may become so low that the rest folds.
    QSize minimumSizeHint() const override;

public slots:
    /// Folded to its first line, who the customer is, or with where he lives below it.
    void fold(bool folded);

private:
    std::array<QLineEdit *, 9> txtCustDetail_{};
};
