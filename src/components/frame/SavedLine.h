#pragma once

#include <QLabel>
#include <QPushButton>
#include <QWidget>

namespace statistics {

/// Tells where a file was saved, and opens it with the program that the desktop has for it. Hidden until then.
class SavedLine : public QWidget
{
    Q_OBJECT
public:
    explicit SavedLine(QWidget *parent = nullptr);

    void tell(const QString &path);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void open();
    void showPath();

    QString path_;
    QLabel *lblSaved_;
    QPushButton *cmdOpen_;
};

} // namespace statistics
