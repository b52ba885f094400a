#include "products/PriceList.h"

#include "platform/runtime/Conversions.h"
#include "platform/runtime/Format.h"

#include <QRegularExpression>

namespace {

/// Empty for what is not told.
QString flagText(const QVariant &flag, const char16_t *set, const char16_t *notSet)
{
    return runtime::isNull(flag) ? QString() : QString::fromUtf16(runtime::isTrue(flag) ? set : notSet);
}

/// A spreadsheet takes a text that begins so for a formula; the apostrophe in front goes again when it is read.
QString csvCell(QString text)
{
    static const QRegularExpression formula(QStringLiteral("^'*[=+\\-@\\t]"));
    static const QRegularExpression number(QStringLiteral("^-\\d+(\\.\\d+)?$"));
    static const QRegularExpression special(QStringLiteral("[,\"\\r\\n]|^\\s|\\s$"));
    if (text.contains(formula) && !text.contains(number))
        text.prepend(u'\'');
    return text.contains(special) ? u'"' + text.replace(u'"', QStringLiteral("\"\"")) + u'"' : text;
}

QString csvLine(const QStringList &texts)
{
    QStringList cells;
    for (const QString &text : texts)
        cells << csvCell(text);
    return cells.join(u',') + QStringLiteral("\r\n");
}

} // namespace

std::vector<PriceLine> priceList(const ado::Recordset &products)
{
    std::vector<PriceLine> lines;
    const auto columnOf = [&](const char *name) { return products.columnIndex(QLatin1String(name)); };
    const int category = columnOf("PM_Catagory"), name = columnOf("PM_Name"), price = columnOf("PM_UnitPrice"),
              taxed = columnOf("PM_IsTaxed"), valid = columnOf("PM_IsValid"), hidden = columnOf("PM_IsHide"),
              memo = columnOf("PM_EtcMemo"), added = columnOf("PM_AddedDate");
    for (int row = 0; row < products.rowCount(); ++row) {
        const auto text = [&](int column) { return runtime::text(products.valueAt(row, column)); };
        lines.push_back({text(category), text(name), text(price),
                         flagText(products.valueAt(row, taxed), u"과세", u"비과세"),
                         flagText(products.valueAt(row, valid), u"취급", u"취급안함"),
                         flagText(products.valueAt(row, hidden), u"숨기기", u"보이기"), text(memo),
                         runtime::dateText(products.valueAt(row, added).toDate())});
    }
    return lines;
}

QByteArray priceListCsv(const std::vector<PriceLine> &lines)
{
    QString csv = QStringLiteral("분류,물품명,판매단가(원),과세,취급여부,숨기기,메모,등록 날짜\r\n");
    for (const PriceLine &line : lines)
        csv +=
            csvLine({line.category, line.name, line.price, line.taxed, line.valid, line.hidden, line.memo, line.added});
    return QByteArray("\xEF\xBB\xBF") + csv.toUtf8();
}
