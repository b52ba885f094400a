#include <QApplication>
#include <QFileInfo>
#include <QGenericPlugin>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QTextStream>
#include <QTimer>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

/// Somebody at a host that was built from the pages: Qt loads it into that program. Sells in the sale window, looks at the report
/// that $REPORT names, says on standard output what stands there, and ends the program.
class Person : public QObject
{
    Q_OBJECT
public:
    Person()
    {
        connect(&boxes_, &QTimer::timeout, this, &Person::answerBox);
        boxes_.start(20);
        QTimer::singleShot(0, this, &Person::work);
    }

private:
    void work()
    {
        QWidget *desk = QApplication::activeWindow();
        for (QWidget *window : QApplication::topLevelWidgets()) {
            if (qobject_cast<QPushButton *>(window))
                desk = window;
        }
        QTest::mouseClick(desk, Qt::LeftButton);
        for (QWidget *window : QApplication::topLevelWidgets()) {
            if (window->objectName() == QLatin1String("frmMain") && window->isVisible())
                sell(window);
        }
        desk->close(); // whatever still stands, the host ends
        QTimer::singleShot(0, qApp, &QApplication::quit);
    }

    void sell(QWidget *sale)
    {
        auto *list = sale->findChild<QTableView *>(QStringLiteral("tdbSaleProductLists"));
        say(QStringLiteral("products: %1").arg(list->model()->rowCount()));
        clickText(list, list->model()->index(0, 0));
        auto *quantity = sale->findChild<QLineEdit *>(QStringLiteral("txtSaleProductLists_5"));
        quantity->setFocus();
        quantity->selectAll();
        QTest::keyClicks(quantity, QStringLiteral("3"));
        QTest::mouseClick(sale->findChild<QWidget *>(QStringLiteral("cmdCSAppendDetail")), Qt::LeftButton);
        if (qEnvironmentVariableIsSet("REPORT"))
            lookAtReport(sale, qEnvironmentVariable("REPORT"));
    }

    void lookAtReport(QWidget *sale, const QString &caption)
    {
        auto *tree = sale->findChild<QTreeWidget *>(QStringLiteral("treeStatItem"));
        for (QWidget *page = tree; page; page = page->parentWidget()) {
            auto *tabs =
                page->parentWidget() ? qobject_cast<QTabWidget *>(page->parentWidget()->parentWidget()) : nullptr;
            if (tabs)
                tabs->setCurrentWidget(page);
        }
        for (QTreeWidgetItemIterator node(tree); *node; ++node) {
            if ((*node)->text(0) == caption)
                clickText(tree, tree->indexFromItem(*node));
        }
        for (const auto *table : sale->findChildren<QTableView *>()) {
            if (table->isVisible() && table->model()->rowCount() > 0)
                say(QStringLiteral("report: %1 %2")
                        .arg(table->model()->index(0, 0).data().toString(),
                             table->model()->index(0, 1).data().toString()));
        }
    }

    void answerBox()
    {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box)
            return;
        say(QStringLiteral("box: ") + box->text().simplified());
        const QList<QAbstractButton *> buttons = box->buttons();
        for (QAbstractButton *button : buttons) {
            if (button->text() == QStringLiteral("예") || button->text() == QStringLiteral("확인"))
                return button->click();
        }
    }

    static void clickText(QAbstractItemView *view, QModelIndex item)
    {
        while (view->visualRect(item).isEmpty() && item.column() + 1 < item.model()->columnCount())
            item = item.siblingAtColumn(item.column() + 1);
        view->scrollTo(item);
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(item).center());
    }
    static void say(const QString &text) { QTextStream(stdout) << text << Qt::endl; }

    QTimer boxes_;
};

class PersonPlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "person.json")
public:
    QObject *create(const QString &, const QString &) override
    {
        return QFileInfo(QCoreApplication::applicationFilePath()).baseName() == QLatin1String("host") ? new Person
                                                                                                      : nullptr;
    }
};

#include "person.moc"
