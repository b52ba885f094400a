#pragma once

#include "sales/RefundOperations.h"

#include <QObject>
#include <QWidget>

class DetailPane;

/// The button "반품": asks in a dialog what is taken back of the current line and writes it.
class RefundFlow : public QObject
{
    Q_OBJECT
public:
    /// `owner` is the window that the dialog stands over.
    RefundFlow(SaleSession &session, DetailPane &detailPane, QWidget *owner);

    /// Takes back from the current line, which the pane has found returnable. Nothing changes when the user cancels.
    void takeBack();

private:
    bool isRefused(const QString &why) const;

    SaleSession &session_;
    DetailPane &detailPane_;
    RefundOperations operations_;
    QWidget *owner_;
};
