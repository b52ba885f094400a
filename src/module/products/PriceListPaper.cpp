#include "platform/controls/Appearance.h"
#include "platform/runtime/Format.h"
#include "products/PriceList.h"

#include <QDateTime>

namespace {

// Millimetres.
constexpr double margin = 14;
constexpr double lineHeight = 6;
constexpr double headHeight = 8;
constexpr double footHeight = 5;

struct PaperColumn
{
    const char16_t *caption;
    double width;
    print::Align align;
    QString (*text)(const PriceLine &line);
};

constexpr PaperColumn paperColumns[] = {
    {u"물품명", 74, print::Align::Left, [](const PriceLine &line) { return line.name; }},
    {u"판매단가(원)", 30, print::Align::Right,
     [](const PriceLine &line) {
         return line.price.isEmpty() ? QString() : runtime::Format(line.price, QStringLiteral("###,###,##0"));
     }},
    {u"과세", 18, print::Align::Center, [](const PriceLine &line) { return line.taxed; }},
    {u"취급여부", 20, print::Align::Center, [](const PriceLine &line) { return line.valid; }},
    {u"메모", 40, print::Align::Left, [](const PriceLine &line) { return line.memo.simplified(); }},
};
constexpr int columnCount = int(std::size(paperColumns));

/// Page by page: each begins with the captions, and with the category that goes on.
class Composer
{
public:
    explicit Composer(const QString &shop)
        : shop_(shop)
        , document_(print::A4, {margin, margin, margin, margin})
    {
        document_.setFont({controls::deskFont().family(), 9});
    }

    print::Document compose(const std::vector<PriceLine> &lines)
    {
        beginPage();
        for (const PriceLine &line : lines) {
            const bool another = !begun_ || line.category != category_;
            if (room() < (another ? 2 : 1) * lineHeight) {
                endPage();
                document_.addPage();
                beginPage();
            }
            if (another || onlyHead_)
                addCategory(line.category);
            addLine(line);
        }
        endPage();
        return document_;
    }

private:
    void beginPage()
    {
        table_ = print::PageTable(0, columnCount, lineHeight);
        for (int column = 1; column <= columnCount; ++column)
            table_.setColumnWidth(column, paperColumns[column - 1].width);
        const int title = addRow(headHeight);
        table_.setSpan(title, 1, columnCount);
        table_.setText(title, 1,
                       shop_.isEmpty() ? QStringLiteral("판매 물품 목록") : shop_ + QStringLiteral(" 판매 물품 목록"));
        table_.setPoints(title, 1, 13);
        table_.setBold(title, 1, true);
        const int captions = addRow(lineHeight);
        for (int column = 1; column <= columnCount; ++column) {
            setCell(captions, column, QString::fromUtf16(paperColumns[column - 1].caption));
            table_.setBold(captions, column, true);
        }
        onlyHead_ = true;
    }

    void endPage()
    {
        document_.addTable(table_);
        const double top = document_.paper().height() - margin - footHeight;
        const double width = document_.paper().width() - 2 * margin;
        const auto foot = [&](const QString &text, print::Align align) {
            document_.addText({.text = text,
                               .box = {margin, top, width, footHeight},
                               .font = {document_.font().family, 8},
                               .align = align});
        };
        foot(QStringLiteral("인쇄: ") + runtime::dateTimeText(QDateTime::currentDateTime()), print::Align::Left);
        foot(QStringLiteral("- %1 -").arg(document_.pageCount()), print::Align::Center);
        height_ = 0;
    }

    int addRow(double height)
    {
        const int row = table_.appendRow();
        table_.setRowHeight(row, height);
        height_ += height;
        return row;
    }

    void setCell(int row, int column, const QString &text)
    {
        table_.setText(row, column, text);
        table_.setAlign(row, column, paperColumns[column - 1].align);
    }

    void addCategory(const QString &category)
    {
        const int row = addRow(lineHeight);
        table_.setSpan(row, 1, columnCount);
        table_.setText(row, 1, u'[' + category + u']');
        table_.setBold(row, 1, true);
        category_ = category;
        begun_ = true;
        onlyHead_ = false;
    }

    void addLine(const PriceLine &line)
    {
        const int row = addRow(lineHeight);
        for (int column = 1; column <= columnCount; ++column)
            setCell(row, column, paperColumns[column - 1].text(line));
    }

    double room() const { return document_.paper().height() - 2 * margin - footHeight - height_; }

    const QString shop_;
    print::Document document_;
    print::PageTable table_{0, columnCount, lineHeight};
    QString category_;
    bool begun_ = false;
    bool onlyHead_ = true;
    double height_ = 0;
};

} // namespace

print::Document priceListOnPaper(const std::vector<PriceLine> &lines, const QString &shop)
{
    return Composer(shop).compose(lines);
}
