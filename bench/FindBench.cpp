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

    /// As after the list was read: nothing is known of its texts yet.
    void begin() const
    {
        box_->clear();
        readAnew_();
        box_->setFocus();
        untilPainted();
        readAnew_(); // what the focus made ready goes again
    }
    /// From the input method's word to the painted list.
    void type(const QString &sign) const
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

/// The sign of that number of the search.
void find(benchmark::State &state, const ado::ConnectionPtr &connection, bool management, int sign)
{
    const FoundList list(connection, management);
    const QString typed = QStringLiteral("ㄱㄴ");
    for (auto _ : state) {
        state.PauseTiming();
        list.begin();
        for (int before = 0; before < sign; ++before)
            list.type(typed.mid(before, 1));
        state.ResumeTiming();
        list.type(typed.mid(sign, 1));
        if (!list.hasFound())
            state.SkipWithError("nothing was found");
    }
}

} // namespace

void registerFind(const Clinics &clinics, Table &table)
{
    const struct
    {
        std::string products;
        ado::ConnectionPtr connection;
        double limit; ///< milliseconds
    } sizes[] = {{"20,000", clinics.large, 16}, {"100,000", clinics.manyProducts, 50}};
    for (const auto &size : sizes) {
        for (const bool management : {false, true}) {
            for (const int sign : {0, 1}) {
                const std::string name =
                    "find/" + size.products + (management ? "/management/" : "/sale/") + std::to_string(sign);
                benchmark::RegisterBenchmark(name.c_str(), [connection = size.connection, management,
                                                            sign](benchmark::State &state) {
                    find(state, connection, management, sign);
                })->Iterations(Searches);
                const std::string what = sign == 0 ? "find a product, " + size.products + " products, "
                                                         + (management ? "management" : "sale")
                                                         + ", first sign typed, painted"
                                                   : "the same, second sign";
                table.add({what, name, {}, size.limit});
            }
        }
    }
}

} // namespace bench
