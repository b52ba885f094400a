#pragma once

#include "platform/controls/SearchBox.h"
#include "platform/runtime/SearchText.h"

#include <QLabel>
#include <QWidget>

#include <functional>

namespace statistics {

/// The line by which a customer is looked for among all of a report, those without a row of their own too. Its keys are
/// those of the lists in the sale window: Enter and F3 go to the next one that fits, Shift+F3 to the one before, Down into
/// the table, Esc clears the line.
class CustomerFind : public QWidget
{
    Q_OBJECT
public:
    using Texts = std::function<runtime::SearchTexts()>;

    explicit CustomerFind(QWidget *table, QWidget *parent = nullptr);

    /// The customers came anew; they are asked for when somebody searches.
    void setTexts(Texts texts);
    void takeFocus();
    void step(int by);

signals:
    /// The place among the texts; -1 when the line is empty again.
    void found(int place);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void search();
    void find();
    void showPlace();

    QWidget *table_;
    controls::SearchBox *box_;
    QLabel *place_;
    Texts make_;
    runtime::SearchTexts texts_;
    std::vector<int> hits_;
    int at_ = -1; ///< of the hits, the one that was moved to
};

} // namespace statistics
