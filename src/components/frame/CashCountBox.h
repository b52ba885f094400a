#pragma once

#include "components/frame/CashCount.h"

#include <QLabel>
#include <QLineEdit>

#include <array>

class QGridLayout;

namespace statistics {

/// Takes the count of the drawer, note by note, and tells at once whether it comes to what the day's cash makes. The last
/// count of this user is kept over the window, so that a customer may come between; the opening for the next day, too.
class CashCountBox : public QWidget
{
    Q_OBJECT
public:
    explicit CashCountBox(QWidget *parent = nullptr);

    /// The count of that day, against this change of cash; hides the box where there is none.
    void setDay(QDate day, const std::optional<Cell> &change);
    /// As it stands now; nothing where there is none to be taken.
    const std::optional<CashCount> &count() const { return count_; }

private:
    QLineEdit *addField(QGridLayout *form, const QString &caption, const QString &typed, int width);
    QLabel *addFigure(QGridLayout *form, const char *name, const QString &caption);
    void fill();
    void take();
    void tell();

    std::optional<CashCount> count_;
    std::array<QLineEdit *, CashCount::pieces.size()> txtPieces_{};
    QLineEdit *txtOpening_ = nullptr;
    QLabel *lblCounted_ = nullptr;
    QLabel *lblDifference_ = nullptr;
};

} // namespace statistics
