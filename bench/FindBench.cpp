#include "bench/FindBench.h"

#include "bench/SaleWindow.h"
#include "products/ProductPane.h"
#include "products/SaleListPane.h"

#include <QInputMethodEvent>
#include <QLabel>
#include <QTabWidget>

#include <functional>

namespace bench {

namespace {

constexpr int Searches = 10; ///< in one repetition

/// One of the two lists of products on the screen, with the focus in its search.
class FoundList
{
public:
    FoundList(const ado::ConnectionPtr &connection, bool management)
        : window_(connection)
    {
        desk::Patient patient;
        patient.key = 1;
        window_.open(patient);
        if (management)
            window_.control<QTabWidget>("c1tabMain").setCurrentIndex(1);
        untilPainted();
        const std::string name = management ? "ProductManager" : "Product";
        box_ = &window_.control<QLineEdit>(("txtFind" + name).c_str());
        place_ = &window_.control<QLabel>(("lblFind" + name).c_str());
        readAnew_ = management ? std::function([this] { window_.pane<ProductPane>().loadProductListsManager(); })
                               : [this] { window_.pane<SaleListPane>().loadSaleProductLists(); };
    }

    /// As after the list was read: nothing is known of its texts yet, and the focus is elsewhere.
    void begin() const
    {
        box_->clear();
        box_->clearFocus();
        readAnew_();
        untilPainted();
    }
    void enter() const
    {
        box_->setFocus();
        untilPainted();
    }
    /// From the input method's word to the painted list.
    void type(QChar sign) const
    {
        QInputMethodEvent event;
        event.setCommitString(sign);
        QApplication::sendEvent(box_, &event);
        untilPainted();
    }
    bool hasFound() const { return place_->text().contains(u'/'); }

private:
    SaleWindow window_;
    QLineEdit *box_ = nullptr;
    QLabel *place_ = nullptr;
    std::function<void()> readAnew_;
};

/// What a user does one after the other.
enum Step { Enters, TypesFirst, TypesSecond, StepCount };

void take(const FoundList &list, int step)
{
    if (step == Enters)
        list.enter();
    else
        list.type(step == TypesFirst ? u'ㄱ' : u'ㄴ');
}

void find(benchmark::State &state, const ado::ConnectionPtr &connection, bool management, int measured)
{
    const FoundList list(connection, management);
    for (auto _ : state) {
        state.PauseTiming();
        list.begin();
        for (int step = Enters; step < measured; ++step)
            take(list, step);
        state.ResumeTiming();
        take(list, measured);
        if (measured != Enters && !list.hasFound())
            state.SkipWithError("nothing was found");
    }
}

void registerList(const std::string &products, const ado::ConnectionPtr &connection, bool management, double limit,
                  Table &table)
{
    const std::string where = management ? "management" : "sale";
    const std::string what[StepCount] = {"enter the search of the " + where + "'s products, " + products + " products",
                                         "the same, first sign typed, painted", "the same, second sign"};
    for (int step = Enters; step < StepCount; ++step) {
        const std::string name = "find/" + products + "/" + where + "/" + std::to_string(step);
        benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State &state) {
            find(state, connection, management, step);
        })->Iterations(Searches);
        table.add({what[step], name, {}, step == Enters ? 100 : limit});
    }
}

} // namespace

void registerFind(const Clinics &clinics, Table &table)
{
    for (const bool management : {false, true}) {
        registerList("20,000", clinics.large, management, 16, table);
        registerList("100,000", clinics.manyProducts, management, 50, table);
    }
}

} // namespace bench
