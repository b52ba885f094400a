#include "entry/KeySheet.h"

#include "entry/Shortcuts.h"
#include "platform/controls/Named.h"

#include <QDialog>
#include <QHeaderView>
#include <QPushButton>
#include <QShortcut>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {

const QString sheetName = QStringLiteral("dlgKeySheet");

QTableWidget *makeTable(const std::vector<Shortcut> &rows, QWidget *parent)
{
    auto *table = controls::named(new QTableWidget(int(rows.size()), 3, parent), QStringLiteral("tblKeys"));
    table->setHorizontalHeaderLabels({QStringLiteral("화면"), QStringLiteral("키"), QStringLiteral("하는 일")});
    table->setAccessibleName(QStringLiteral("단축키 목록"));
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setTabKeyNavigation(false);
    table->verticalHeader()->hide();
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() * 3 / 2);
    table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    QString group;
    for (int row = 0; row < table->rowCount(); ++row) {
        const Shortcut &shortcut = rows[std::size_t(row)];
        const QString where = QString::fromUtf16(shortcut.where);
        table->setItem(row, 0, new QTableWidgetItem(where == group ? QString() : where));
        table->setItem(row, 1, new QTableWidgetItem(QLatin1String(shortcut.keys)));
        table->setItem(row, 2, new QTableWidgetItem(QString::fromUtf16(shortcut.what)));
        group = where;
    }
    table->resizeColumnsToContents();
    table->horizontalHeader()->setStretchLastSection(true);
    return table;
}

} // namespace

void showKeySheet(QWidget &window)
{
    auto *sheet = window.findChild<QDialog *>(sheetName);
    if (!sheet) {
        sheet = controls::named(new QDialog(&window), sheetName);
        sheet->setAttribute(Qt::WA_DeleteOnClose);
        sheet->setWindowTitle(QStringLiteral("단축키"));
        auto *close = new QPushButton(QStringLiteral("닫기"), sheet);
        QObject::connect(close, &QPushButton::clicked, sheet, &QDialog::close);
        auto *again = new QShortcut(QKeySequence(Qt::Key_F1), sheet);
        QObject::connect(again, &QShortcut::activated, sheet, &QDialog::close);
        auto *layout = new QVBoxLayout(sheet);
        layout->addWidget(makeTable(shortcuts(), sheet));
        layout->addWidget(close, 0, Qt::AlignRight);
        const QFontMetrics text = sheet->fontMetrics();
        sheet->resize(text.averageCharWidth() * 80, text.height() * 34);
    }
    sheet->show();
    sheet->raise();
    sheet->activateWindow();
}
