#include "bench/DayBench.h"

#include "bench/OpenSale.h"
#include "bench/SaleWindow.h"
#include "bench/TypicalPatients.h"
#include "platform/controls/MessageBox.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QTimer>

namespace bench {

namespace {

constexpr int Deeds = 5; ///< in one repetition

/// Answers every question with yes.
class YesToAll
{
public:
    YesToAll()
    {
        controls::setMessageHandler([](const QString &, int flags, const QString &, const QString &) {
            return flags & controls::YesNo ? controls::Answer::Yes : controls::Answer::Confirm;
        });
    }
    ~YesToAll() { controls::setMessageHandler({}); }
    YesToAll(const YesToAll &) = delete;
    YesToAll &operator=(const YesToAll &) = delete;
};

void click(QAbstractButton &button)
{
    QTest::mouseClick(&button, Qt::LeftButton);
    untilPainted();
}

void need(bool done)
{
    if (!done)
        throw std::runtime_error("the window does not show what was asked for");
}

/// Clicks a button that opens a dialog; works in it as soon as it is painted and leaves it with F12.
void clickThrough(QAbstractButton &button, const std::function<bool(QWidget &)> &work)
{
    bool worked = false;
    QTimer::singleShot(0, &button, [&] {
        QWidget *dialog = QApplication::activeModalWidget();
        if (!dialog)
            return;
        untilPainted();
        worked = work(*dialog);
        QTest::keyClick(dialog, Qt::Key_F12);
    });
    QTest::mouseClick(&button, Qt::LeftButton);
    untilPainted();
    need(worked);
}

/// One thing done in the window of a patient, whose newest order is brought back each time.
struct Deed
{
    const char *name;
    const char *what;
    std::function<void(SaleWindow &window)> prepare; ///< not timed
    std::function<void(SaleWindow &window)> run;
    bool changesOrder = true;
    double limit = 100;
};

void takeFirstPayment(SaleWindow &window)
{
    clickThrough(window.control<QAbstractButton>("chkCmdAutomateReceipt"), [](QWidget &dialog) {
        auto *cash = dialog.findChild<QLineEdit *>(QStringLiteral("txtGeneralSuNapMoney_0"));
        cash->setFocus();
        cash->selectAll();
        QTest::keyClicks(cash, QStringLiteral("1000"));
        QTest::mouseClick(dialog.findChild<QAbstractButton *>(QStringLiteral("chkGeneralRemainToMisuMoney")),
                          Qt::LeftButton);
        return true;
    });
}

void openProducts(SaleWindow &window)
{
    window.control<QTabWidget>("c1tabMain").setCurrentIndex(1);
    untilPainted();
    click(window.control<QAbstractButton>("chkCmdProdSaleAddEdiDel_1"));
}

void saveProduct(SaleWindow &window)
{
    need(!window.control<QAbstractButton>("chkCmdProdSaleAddEdiDel_1").isVisible()); // in edit
    click(window.control<QAbstractButton>("chkCmdSaveProduct_0"));
    need(window.control<QAbstractButton>("chkCmdProdSaleAddEdiDel_1").isVisible());
}

void lookAtOutstanding(SaleWindow &window)
{
    clickThrough(window.control<QAbstractButton>("chkCmdRunMisuMoneyManger"), [](QWidget &dialog) {
        return dialog.findChild<QTableView *>(QStringLiteral("dgReceiptView"))->isVisible();
    });
}

const std::vector<Deed> &deeds()
{
    static const std::vector<Deed> all{
        {"day/first_payment", "first payment: dialog opened, filled in, saved, painted", {}, takeFirstPayment},
        {"day/delete_order",
         "delete an order, painted",
         {},
         [](SaleWindow &window) { click(window.control<QAbstractButton>("chkCmdOrderMasterED_1")); }},
        {"day/save_product", "save a product, painted, 20,000 products", openProducts, saveProduct, false},
        {"day/outstanding",
         "a patient's outstanding money: list opened, painted, closed",
         {},
         lookAtOutstanding,
         false},
    };
    return all;
}

void run(benchmark::State &state, OpenSale &sale, const desk::Patient &patient, const ado::ConnectionPtr &connection,
         const Deed &deed)
{
    const YesToAll answers;
    SaleWindow window(connection);
    for (auto _ : state) {
        state.PauseTiming();
        sale.restore();
        const std::string full = sale.rows();
        sale.removeLedger();
        const std::string before = sale.rows();
        window.open(patient);
        if (deed.prepare)
            deed.prepare(window);
        state.ResumeTiming();
        deed.run(window);
        state.PauseTiming();
        if ((sale.rows() != before) != deed.changesOrder || full == before)
            state.SkipWithError("it was not done");
        state.ResumeTiming();
    }
    sale.restore();
}

} // namespace

void registerDay(const Clinics &clinics, Table &table)
{
    const ado::ConnectionPtr connection = clinics.large;
    const desk::Patient patient = typicalPatients(*connection).front();
    const auto sale = std::make_shared<OpenSale>(connection, patient);
    for (const Deed &deed : deeds()) {
        benchmark::RegisterBenchmark(deed.name, [=, &deed](benchmark::State &state) {
            run(state, *sale, patient, connection, deed);
        })->Iterations(Deeds);
        table.add({deed.what, deed.name, {}, deed.limit});
    }
}

} // namespace bench
